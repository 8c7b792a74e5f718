#include <gtest/gtest.h>

#include "common/Error.h"
#include "engine/ExtractPieces.h"

namespace nv {
namespace {

struct RangeCase {
  Text text;
  Text separator;
  std::int16_t start, end;
  Text hidden;  // result without the separators around the range
  Text shown;   // result with them
  std::int16_t resolvedStart, resolvedEnd;
};

TEST(ExtractPieces, ResolvesRangesAndSeparators) {
  const RangeCase cases[] = {
      {u"a;b;c", u";", 0, 0, u"a;b;c", u"a;b;c", 0, 2},
      {u"a;b;c", u";", 0, 1, u"a", u"a;", 0, 0},
      {u"a;b;c", u";", 1, 2, u"b", u";b;", 1, 1},
      {u"a;b;c", u";", 1, 0, u"b;c", u";b;c", 1, 2},
      {u"a;b;c", u";", 2, 3, u"c", u";c", 2, 2},
      {u"a;b;c", u";", -1, 0, u"c", u";c", 2, 2},
      {u"a;b;c", u";", -2, 0, u"b;c", u";b;c", 1, 2},
      {u"a;b;c", u";", 0, -1, u"a;b", u"a;b;", 0, 1},
      {u"a;b;c", u";", 0, 3, u"a;b;c", u"a;b;c", 0, 2},
      {u"a;b;c", u";", 2, 2, u"", u"", 2, 1},
      {u"a;b;c", u";", 0, 4, u"", u"", 0, 3},
      {u"a;b;c", u";", -5, -5, u"", u"", -2, -3},  // reversed: empty, not a failure
      {u"abc", u";", 0, 1, u"abc", u"abc", 0, 0},
      {u"abc", u";", 1, 2, u"", u"", 1, 1},
      {u"", u";", 0, 0, u"", u"", 0, 0},
      {u"", u";", 0, 1, u"", u"", 0, 0},
      {u"", u";", -1, 0, u"", u"", 0, 0},
      {u"a;b;", u";", 0, 0, u"a;b", u"a;b;", 0, 2},
      {u"a;;b", u";", 1, 2, u"", u";", 1, 1},
      {u"a;;b", u";", 1, 0, u"b", u";b", 1, 2},  // the range starts at a separator
      {u"1\r\n2\r\n3", u"\r\n", 1, 2, u"2", u"\r\n2\r\n", 1, 1},
      {u"a,,,b", u",,", 1, 0, u",b", u",,,b", 1, 1},
      // The empty separator does not cut: the whole text is the one piece.
      {u"abc", u"", 0, 0, u"abc", u"abc", 0, 0},
      {u"abc", u"", 0, 1, u"abc", u"abc", 0, 0},
      {u"abc", u"", 1, 0, u"", u"", 1, 0},
  };
  for (const auto& c : cases) {
    for (const bool show : {false, true}) {
      SCOPED_TRACE(testing::Message() << "case " << (&c - cases) << (show ? " shown" : " hidden"));
      std::int16_t start = c.start, end = c.end;
      EXPECT_EQ(ExtractPieces(c.text, c.separator, start, end, show), show ? c.shown : c.hidden);
      EXPECT_EQ(start, c.resolvedStart);
      EXPECT_EQ(end, c.resolvedEnd);
    }
  }
}

TEST(ExtractPieces, AStartBeforeTheFirstPieceFails) {
  std::int16_t start = -5, end = -4;
  try {
    ExtractPieces(u"a;b;c", u";", start, end, true);
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::SubscriptOutOfRange);
  }
  EXPECT_EQ(start, -2);  // written back before the failure
  EXPECT_EQ(end, -2);
}

// Execution keeps one cut for all fields, and a field with a non-numeric position reuses
// the value the previous field left.
TEST(ExtractPieces, OneCutServesSuccessiveFields) {
  const Text text = u"h1;h2\nr1;r2\nr3;r4\n";
  const PieceCut cut(text, u"\n");
  ASSERT_EQ(cut.LastIndex(), 3u);
  std::int16_t start = 1, end = 2;
  EXPECT_EQ(ExtractPieces(cut, start, end, false), u"r1;r2");
  EXPECT_EQ(ExtractPieces(cut, start, end, false), u"");  // start 1, end 1 reads as "through piece 0"
  start = -2;
  end = 0;
  EXPECT_EQ(ExtractPieces(cut, start, end, true), u"\nr3;r4\n");
  EXPECT_EQ(start, 2);
  EXPECT_EQ(end, 3);
}

TEST(ExtractPieces, PositionsBeyondSixteenBitsAreWrittenBackSaturated) {
  Text text;
  for (int i = 0; i < 40000; ++i) text += u"x\n";
  std::int16_t start = -1, end = 0;
  EXPECT_EQ(ExtractPieces(text, u"\n", start, end, true), u"\n");  // the empty last piece
  EXPECT_EQ(start, 32767);
  EXPECT_EQ(end, 32767);
  start = 0;
  end = 0;
  EXPECT_EQ(ExtractPieces(text, u"\n", start, end, false).size(), text.size() - 1);
}

}  // namespace
}  // namespace nv

namespace nv {
namespace {

// A field's span holds all that its extraction reads and gives back, whatever the range: only
// that span of a variable read in part is read.
TEST(ExtractPieces, TheSpanHoldsWhatTheFieldTakes) {
  const struct {
    Text text;
    Text separator;
  } cases[] = {{u"a;bb;;ccc;", u";"}, {u"l1\r\nl2\r\n\r\nl4", u"\r\n"}, {u"no separator", u"|"}, {u"", u";"}};
  for (const auto& c : cases) {
    const PieceCut cut(c.text, c.separator, kPositionalReach);
    for (int s = -7; s <= 7; ++s) {
      for (int e = -7; e <= 7; ++e) {
        for (const bool show : {false, true}) {
          SCOPED_TRACE(testing::Message() << "start " << s << ", end " << e << ", show " << show);
          auto spanStart = static_cast<std::int16_t>(s), spanEnd = static_cast<std::int16_t>(e);
          auto start = spanStart, end = spanEnd;
          UnitSpan span;
          bool spanFails = false, extractFails = false;
          try {
            span = ExtractedSpan(cut, spanStart, spanEnd);
          } catch (const RuntimeError&) {
            spanFails = true;
          }
          TextView taken;
          try {
            taken = ExtractPieces(cut, start, end, show);
          } catch (const RuntimeError&) {
            extractFails = true;
          }
          ASSERT_EQ(spanFails, extractFails);
          if (extractFails) continue;
          EXPECT_EQ(spanStart, start);
          EXPECT_EQ(spanEnd, end);
          if (taken.empty()) continue;
          const auto at = static_cast<std::size_t>(taken.data() - cut.Whole().data());
          EXPECT_GE(at, span.begin);
          EXPECT_LE(at + taken.size(), span.end);
        }
      }
    }
  }
}

}  // namespace
}  // namespace nv
