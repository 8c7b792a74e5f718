#include <gtest/gtest.h>

#include <algorithm>
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

// Texts longer than the stretches the engine upper-cases at a time (64 Ki units), with the
// mask's literals put across the edges of those stretches and at the text's end, in either
// case.
TEST(Differential, FindValuesMatchesTheReferenceOverLongTexts) {
  constexpr std::size_t kStretch = std::size_t{1} << 16;
  const auto otherCase = [](char16_t c) -> char16_t {
    switch (c) {
      case u'a': return u'A';
      case u'A': return u'a';
      case u'b': return u'B';
      case u'B': return u'b';
      case u'\u00E9': return u'\u00C9';
      case u'\u00C9': return u'\u00E9';
      default: return c;
    }
  };
  Generator g(4);
  for (int i = 0; i < 60; ++i) {
    Text text(3 * kStretch + g.Below(64), u'x');
    for (int near = 0; near < 200; ++near) text[g.Below(text.size())] = g.Flip() ? u'a' : u'\u00C9';
    Text literals[2];
    for (Text& literal : literals) literal = u"=" + g.TextOver(u"aAb\u00E9\u00C9", 4);
    // Now and then a literal longer than half a stretch.
    if (g.Below(4) == 0) literals[g.Below(2)] += Text(kStretch / 2 + g.Below(kStretch), u'b');
    const bool literalLast = g.Flip();
    const Text mask = u"*" + literals[0] + u"*" + literals[1] + (literalLast ? u"" : u"*");
    const auto put = [&](TextView literal, std::size_t at) {
      for (std::size_t k = 0; k < literal.size(); ++k) text[at + k] = g.Flip() ? otherCase(literal[k]) : literal[k];
    };
    // The first literal near the start now and then: the search for the second one then
    // starts inside the stretch already upper-cased.
    put(literals[0], g.Below(3) == 0 ? g.Below(64) : kStretch - g.Below(literals[0].size() + 1));
    put(literals[1], std::min(text.size() - literals[1].size(), kStretch * (1 + g.Below(2)) - g.Below(literals[1].size() + 1)));
    if (literalLast && g.Flip()) put(literals[1], text.size() - literals[1].size());
    const std::string difference = reference::CompareFindValues(text, mask, u"*", 0, 0, g.Below(4) == 0, g.Flip());
    ASSERT_TRUE(difference.empty()) << difference.substr(0, 2000);
  }
}

}  // namespace
}  // namespace nv
