#include <gtest/gtest.h>

#include "common/CaseMapping.h"
#include "common/Text.h"
#include "common/Utf.h"

namespace nv {
namespace {

TEST(Utf, RoundTripsEveryKindOfUnit) {
  const Text samples[] = {u"", u"abc", u"élève ÉTÉ ß ÿ", u"日本", u"\U0001F600", Text(1, char16_t(0xD800)),
                          Text(1, char16_t(0xDC00)) + u"x", Text(1, u'\0') + u"z"};
  for (const Text& s : samples) EXPECT_EQ(FromUtf8(ToUtf8(s)), s);
  EXPECT_EQ(ToUtf8(u"é"), "\xC3\xA9");
  // Appending keeps what the buffer held, even where a unit takes several bytes.
  for (const Text& s : samples) {
    Text text = u"kept ";
    AppendFromUtf8(ToUtf8(s), text);
    EXPECT_EQ(text, u"kept " + s);
  }
}

// Runs of ASCII are taken in blocks: whatever follows a run, at any place in a block, is
// converted as itself, and found when it is wrong.
TEST(Utf, AsciiRunsEndWhereverTheOtherUnitsBegin) {
  const struct {
    Text unit;
    std::string bytes;
  } others[] = {{u"é", "\xC3\xA9"}, {u"\U0001F600", "\xF0\x9F\x98\x80"}, {Text(1, char16_t(0xD800)), "\xED\xA0\x80"}};
  for (std::size_t run = 0; run <= 40; ++run) {
    for (const auto& other : others) {
      const Text ascii(run, u'a');
      EXPECT_EQ(ToUtf8(ascii + other.unit + ascii), std::string(run, 'a') + other.bytes + std::string(run, 'a')) << run;
      const std::string bytes = std::string(run, 'a') + other.bytes + std::string(run, 'a');
      EXPECT_EQ(FromUtf8(bytes), ascii + other.unit + ascii);
      EXPECT_EQ(Utf16Length(bytes), 2 * run + other.unit.size());
    }
    // And a bad byte or a surrogate form after a run is found where it is.
    const std::string bad = std::string(run, 'a') + "\xFF" + std::string(run, 'a');
    EXPECT_EQ(Utf8ValidLength(bad), run);
    EXPECT_FALSE(IsStandardUtf8(std::string(run, 'a') + "\xED\xA0\x80"));
    EXPECT_TRUE(IsStandardUtf8(std::string(run, 'a') + "\xC3\xA9" + std::string(run, 'a')));
  }
}

TEST(Utf, MalformedBytesBecomeReplacementCharacters) {
  EXPECT_EQ(FromUtf8("a\xFF" "b"), u"a\uFFFDb");
  EXPECT_EQ(FromUtf8("\xC3"), u"\uFFFD");
  EXPECT_EQ(FromUtf8("\xC0\x80"), u"\uFFFD\uFFFD");  // overlong
  EXPECT_FALSE(IsUtf8("\xE9t\xE9"));
  EXPECT_TRUE(IsUtf8("\xC3\xA9t\xC3\xA9"));
  EXPECT_EQ(FromCp1252("\xE9t\xE9 \x80\x9F"), u"été €Ÿ");
}

TEST(CaseMapping, KeepsLengthAndHandlesFrench) {
  struct Case {
    const char16_t* in;
    const char16_t* out;
  } const cases[] = {
      {u"élève", u"ÉLÈVE"}, {u"ÉTÉ", u"ÉTÉ"}, {u"straße", u"STRAßE"}, {u"ÿ", u"Ÿ"},
      {u"œuvre ç", u"ŒUVRE Ç"}, {u"a1;-_", u"A1;-_"}, {u"ıi", u"II"}, {u"\U0001F600", u"\U0001F600"},
  };
  for (const auto& c : cases) EXPECT_EQ(UpperCase(c.in), c.out);
}

TEST(Text, DecimalText) {
  EXPECT_EQ(DecimalText(0), u"0");
  EXPECT_EQ(DecimalText(-2147219504), u"-2147219504");
  EXPECT_EQ(DecimalText(INT64_MIN), u"-9223372036854775808");
}

}  // namespace
}  // namespace nv
