#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

#include "engine/Scan.h"

namespace nv {
namespace {

using ScanFunction = std::size_t (*)(const char16_t*, std::size_t, char16_t) noexcept;

std::size_t NaiveScan(const char16_t* first, std::size_t count, char16_t unit) {
  for (std::size_t i = 0; i < count; ++i)
    if (first[i] == unit) return i;
  return count;
}

// Every length across the vector widths, the unit at every place or absent, among neighbours
// that differ from it only in one bit or in the lane's high byte.
TEST(Scan, EveryVariantFindsTheFirstUnitAtEveryOffset) {
  std::vector<std::pair<const char*, ScanFunction>> variants = {{"ScanFor", &ScanFor},
                                                                {"portable", &detail::ScanForPortable}};
#if defined(__SSE2__)
  variants.emplace_back("sse2", &detail::ScanForSse2);
#endif
  for (const char16_t unit : {u';', u'\0', char16_t(0x8000), char16_t(0xFFFF), u'é'}) {
    const char16_t noise[] = {char16_t(unit ^ 1), char16_t(unit ^ 0x8000), char16_t(unit ^ 0x100), char16_t(unit + 2)};
    for (std::size_t length = 0; length <= 80; ++length) {
      Text text(length + 1, u'x');
      for (std::size_t i = 0; i < text.size(); ++i) text[i] = noise[i % 4];
      for (std::size_t place = 0; place <= length; ++place) {
        Text probe = text;
        if (place < length) probe[place] = unit;
        if (place + 3 < length) probe[place + 3] = unit;  // a later hit must not win
        probe[length] = unit;                             // past the end: must not be seen
        const std::size_t expected = NaiveScan(probe.data(), length, unit);
        for (const auto& [name, scan] : variants)
          ASSERT_EQ(scan(probe.data() + 0, length, unit), expected)
              << name << " length " << length << " place " << place;
      }
    }
  }
}

// Random texts over a small alphabet, against the standard library's search: occurrences
// across the blocks of the vectorised passes, overlapping candidates ("aa" in "aaa"),
// needles cut by the end of the text, starts anywhere.
TEST(Scan, EveryVariantFindsWhatTheStandardSearchFinds) {
  using FindFromFunction = std::size_t (*)(TextView, std::size_t, TextView) noexcept;
  using FindEveryFunction = std::size_t (*)(TextView, std::size_t, TextView, std::span<std::size_t>) noexcept;
  std::vector<std::pair<const char*, FindFromFunction>> findFrom = {{"portable", &detail::FindFromPortable}};
  std::vector<std::pair<const char*, FindEveryFunction>> findEvery = {{"portable", &detail::FindEveryPortable}};
#if defined(__SSE2__)
  findFrom.emplace_back("sse2", &detail::FindFromSse2);
  findEvery.emplace_back("sse2", &detail::FindEverySse2);
  if (detail::HasAvx2()) findEvery.emplace_back("avx2", &detail::FindEveryAvx2);
#endif
  std::mt19937 random(11);
  const TextView alphabet = u"aab;\r\n";
  for (int round = 0; round < 4000; ++round) {
    Text text(random() % 110, u' ');
    for (char16_t& c : text) c = alphabet[random() % alphabet.size()];
    Text needle(1 + random() % 4, u' ');
    for (char16_t& c : needle) c = alphabet[random() % alphabet.size()];
    const TextView view = text;
    std::vector<std::size_t> expected;
    for (std::size_t at = 0; (at = view.find(needle, at)) != TextView::npos;) expected.push_back(at += needle.size());
    // A buffer of 3 makes the search stop and resume, as a long text does with any buffer.
    for (const auto& [name, find] : findEvery) {
      std::vector<std::size_t> ends;
      std::array<std::size_t, 3> buffer;
      for (std::size_t from = 0;; from = ends.back()) {
        const std::size_t count = find(text, from, needle, buffer);
        ends.insert(ends.end(), buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count));
        if (count < buffer.size()) break;
      }
      ASSERT_EQ(ends, expected) << name << " round " << round;
    }
    const std::size_t from = random() % (text.size() + 2);
    for (const auto& [name, find] : findFrom)
      ASSERT_EQ(find(text, from, needle), from < text.size() ? view.find(needle, from) : NotFound)
          << name << " round " << round;
  }
}

TEST(Scan, FindFromFollowsTheSearchRules) {
  struct Case {
    const char16_t* text;
    std::size_t from;
    const char16_t* needle;
    std::size_t expected;
  } const cases[] = {
      {u"abc", 0, u"", 0},        {u"abc", 2, u"", 2},          {u"abc", 3, u"", NotFound},
      {u"", 0, u"", NotFound},    {u"ab", 0, u"abc", NotFound}, {u"abc", 1, u"ab", NotFound},
      {u"aaab", 0, u"aab", 1},    {u"a;b;c", 2, u";", 3},       {u"a;b;c", 9, u";", NotFound},
      {u"xx\r\n", 0, u"\r\n", 2}, {u"Aa", 0, u"a", 1},          {u"ab,,,cd", 3, u",,", 3},
  };
  for (const auto& c : cases) EXPECT_EQ(FindFrom(c.text, c.from, c.needle), c.expected) << (&c - cases);
}

}  // namespace
}  // namespace nv
