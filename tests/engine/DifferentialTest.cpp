#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tests/engine/reference/Differential.h"

namespace nv {
namespace {

// Small alphabets make separators, filters and near-misses frequent.
class Generator {
 public:
  explicit Generator(std::uint32_t seed) : random_(seed) {}

  // Mostly short texts, some long enough to cross the blocks of the vectorised scans.
  Text TextOver(TextView alphabet, std::size_t maxLength) {
    Text text(Below(Below(8) == 0 ? 4 * maxLength : maxLength + 1), u' ');
    for (char16_t& c : text) c = alphabet[Below(alphabet.size())];
    return text;
  }
  std::int16_t Position() { return static_cast<std::int16_t>(static_cast<int>(Below(13)) - 6); }
  bool Flip() { return Below(2) == 1; }
  std::size_t Below(std::size_t bound) { return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_); }

 private:
  std::mt19937 random_;
};

constexpr int kCases = 20000;

TEST(Differential, SplitMatchesTheReference) {
  Generator g(1);
  for (int i = 0; i < kCases; ++i) {
    const Text text = g.TextOver(u"ab;;,\r\n", 24);
    const Text separator = g.Below(4) == 0 ? Text() : g.TextOver(u"a;,\r\n", 3);
    const std::string difference = reference::CompareSplit(text, separator);
    ASSERT_TRUE(difference.empty()) << difference;
  }
}

TEST(Differential, ExtractPiecesMatchesTheReference) {
  Generator g(2);
  for (int i = 0; i < kCases; ++i) {
    const Text text = g.TextOver(u"ab;;\r\n", 20);
    const Text separator = g.Below(6) == 0 ? Text() : g.TextOver(u"a;;\r\n", 2);
    std::vector<reference::FieldCall> fields(1 + g.Below(4));
    for (auto& field : fields) {
      if (g.Below(5) != 0) field.start = g.Position();  // otherwise: keep the previous value
      if (g.Below(5) != 0) field.end = g.Position();
      field.showSeparators = g.Flip();
    }
    const std::string difference = reference::CompareExtractPieces(text, separator, fields);
    ASSERT_TRUE(difference.empty()) << difference;
  }
}

TEST(Differential, FindValuesMatchesTheReference) {
  Generator g(3);
  const Text filters[] = {u"*", u"*", u"%", u"**", u"a", u"", u"*a"};
  for (int i = 0; i < kCases; ++i) {
    const Text text = g.TextOver(u"aAb= *\u00E9\u00C9\u00DF", 16);
    const Text mask = g.TextOver(u"aAb= **%\u00E9", 8);
    const Text& filter = filters[g.Below(std::size(filters))];
    const bool wholeText = g.Flip();
    const std::int16_t start = wholeText ? 0 : g.Position(), end = wholeText ? 0 : g.Position();
    const std::string difference = reference::CompareFindValues(text, mask, filter, start, end, g.Flip(), g.Flip());
    ASSERT_TRUE(difference.empty()) << difference;
  }
}

}  // namespace
}  // namespace nv
