#include <gtest/gtest.h>

#include <vector>

#include "common/CaseMapping.h"
#include "common/Error.h"
#include "engine/FindValues.h"
#include "engine/Mask.h"

namespace nv {
namespace {

struct FindCase {
  Text text;
  Text mask;
  Text filter;
  bool caseSensitive;
  bool trim;
  std::vector<Text> values;
};

const std::vector<Text> kNoMatch = {u""};

std::vector<Text> Owned(const std::vector<TextView>& views) { return {views.begin(), views.end()}; }

TEST(FindValues, ReadsTheValuesThatTheMaskMarks) {
  const FindCase cases[] = {
      {u"Name=John;Age=42", u"Name=*;Age=*", u"*", false, false, {u"John", u"42"}},
      {u"name=John;age=42", u"Name=*;Age=*", u"*", false, false, {u"John", u"42"}},
      {u"name=John;age=42", u"Name=*;Age=*", u"*", true, false, kNoMatch},
      {u"key = value", u"*=*", u"*", false, false, {u"key ", u" value"}},
      {u"key = value", u"*=*", u"*", false, true, {u"key", u"value"}},
      {u"2024-01-05", u"*-*-*", u"*", false, false, {u"2024", u"01", u"05"}},
      {u"A-B-C", u"*-*", u"*", false, false, {u"A", u"B-C"}},
      {u"<a>b>", u"<*>", u"*", false, false, {u"a"}},
      {u"  abc ", u"*", u"*", false, false, {u"  abc "}},
      {u"  abc ", u"*", u"*", false, true, {u"abc"}},
      {u"\t abc \t", u"*", u"*", false, true, {u"\t abc \t"}},  // only spaces are trimmed
      {u"abc", u"**", u"*", false, false, {u"", u"abc"}},
      {u"x=1", u"y=*", u"*", false, false, kNoMatch},
      {u"[a][b]", u"[%]%", u"%", false, false, {u"a", u"[b]"}},
      {u"axb", u"a*b", u"*", false, false, {u"x"}},
      {u"axbxb", u"a*b", u"*", false, false, {u"x"}},  // the end test looks at the whole text only
      {u"axbc", u"a*b", u"*", false, false, kNoMatch},
      {u"", u"*", u"*", false, false, {u""}},
      {u"", u"**", u"*", false, false, kNoMatch},  // an empty literal is not found in empty text
      {u"a", u"a**", u"*", false, false, kNoMatch},
      {u"ab", u"a**", u"*", false, false, {u"", u"b"}},
      {u"k: v", u"k:{}", u"{}", false, true, {u"v"}},
      // A lower-case filter is not found in the upper-cased mask: no placeholder is left.
      {u"axb", u"axb", u"x", false, false, {}},
      {u"axb", u"axb", u"x", true, false, {u"x"}},
      {u"ayb", u"axb", u"x", false, false, kNoMatch},
      // Masks without placeholder: a match collects nothing.
      {u"abc", u"abc", u"*", false, false, {}},
      {u"abc", u"", u"*", false, false, {}},
      {u"abc", u"abc", u"", false, false, {}},
      {u"abd", u"abc", u"*", false, false, kNoMatch},
      // French text: case-insensitive finding keeps each unit's place.
      {u"élève=Zoé", u"ÉLÈVE=*", u"*", false, false, {u"Zoé"}},
      {u"Été:ÿ;", u"été:*;", u"*", false, false, {u"ÿ"}},
      {u"straße=1", u"STRAßE=*", u"*", false, false, {u"1"}},
      {u"Été:ÿ;", u"été:*;", u"*", true, false, kNoMatch},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "case " << (&c - cases));
    Text text = c.text, mask = c.mask;
    std::int16_t start = 0, end = 0;
    std::vector<TextView> values = {u"stale", u"stale"};
    FindValues(text, mask, c.filter, start, end, c.caseSensitive, c.trim, values);
    EXPECT_EQ(Owned(values), c.values);
    EXPECT_EQ(text, c.text);
    EXPECT_EQ(mask, c.caseSensitive ? c.mask : UpperCase(c.mask));
  }
}

TEST(FindValues, UsesThePartBetweenStartAndEnd) {
  struct Case {
    std::int16_t start, end;
    Text part;  // the text after the call; the mask "*" takes it whole
    std::int16_t resolvedStart, resolvedEnd;
    std::int32_t error;
  } const cases[] = {
      {0, 0, u"abcdef", 1, 6, 0},
      {2, 0, u"bcdef", 2, 6, 0},
      {2, 4, u"bcd", 2, 4, 0},
      {0, -2, u"abcde", 1, 5, 0},
      {3, 2, u"", 3, 2, 0},
      {7, 0, u"", 7, 6, 0},
      {9, 12, u"", 9, 12, 0},
      {4, 20, u"def", 4, 20, 0},
      {-1, 0, u"abcdef", -1, 6, ErrorNumber::InvalidProcedureCall},
      {4, 2, u"abcdef", 4, 2, ErrorNumber::InvalidProcedureCall},
      {0, -8, u"abcdef", 1, -1, ErrorNumber::InvalidProcedureCall},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "case " << (&c - cases));
    Text text = u"abcdef", mask = u"*";
    std::int16_t start = c.start, end = c.end;
    std::vector<TextView> values;
    std::int32_t error = 0;
    try {
      FindValues(text, mask, u"*", start, end, true, false, values);
    } catch (const RuntimeError& e) {
      error = e.Number();
    }
    EXPECT_EQ(error, c.error);
    EXPECT_EQ(text, c.part);
    EXPECT_EQ(Owned(values), error ? kNoMatch : std::vector<Text>{c.part});
    EXPECT_EQ(start, c.resolvedStart);
    EXPECT_EQ(end, c.resolvedEnd);
  }
}

TEST(SplitMask, GivesOnePartMoreThanPlaceholders) {
  struct Case {
    TextView mask, filter;
    std::vector<TextView> parts;
  } const cases[] = {
      {u"Name=*;Age=*", u"*", {u"Name=", u";Age=", u""}},
      {u"**", u"*", {u"", u"", u""}},
      {u"a***b", u"**", {u"a", u"*b"}},
      {u"", u"*", {u""}},
      {u"a*b", u"", {u"a*b"}},
  };
  for (const auto& c : cases) EXPECT_EQ(SplitMask(c.mask, c.filter), c.parts) << (&c - cases);
}

}  // namespace
}  // namespace nv
