#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "engine/ExtractPieces.h"
#include "engine/PieceCut.h"

namespace nv {
namespace {

// The separators' ends found one search at a time, left to right: what every cut must give.
std::vector<std::size_t> ReferenceEnds(TextView text, TextView separator) {
  std::vector<std::size_t> ends;
  for (std::size_t at = text.find(separator); at != TextView::npos; at = text.find(separator, at))
    ends.push_back(at += separator.size());
  return ends;
}

// Pieces of 0 to `longest` units, each closed by the separator: with short pieces some
// separator straddles whatever place a text of millions of units is divided at between
// threads.
Text Pieces(std::size_t units, TextView separator, std::size_t longest, std::uint32_t seed) {
  std::mt19937 random(seed);
  Text text;
  text.reserve(units + longest + separator.size());
  while (text.size() < units) {
    text.append(random() % (longest + 1), u'x');
    text += separator;
  }
  return text;
}

struct CutCase {
  const char* name;
  Text text;
  Text separator;
  std::size_t reach;
};

std::vector<CutCase> CutCases() {
  const std::size_t large = 3u << 20;  // divided between threads where the machine has several
  Text sparse(large, u'x');            // three separators, all in the first stretch
  sparse.replace(10, 1, u";");
  sparse.replace(20, 1, u";");
  sparse.replace(30, 1, u";");
  Text tailOnly(large, u'x');  // two separators at the very end
  tailOnly.replace(large - 3, 1, u";");
  tailOnly.replace(large - 1, 1, u";");
  return {
      {"short, every piece", u"a;b;;c;", u";", kEveryPiece},
      {"short, reach 1", u"a;b;;c;", u";", 1},
      {"short, reach 2 overlapping", u"a;b;c", u";", 2},
      {"no separator", u"abc", u";", 3},
      {"self-overlapping separator", u"aaaaa;aaa", u"aa", kEveryPiece},
      {"large lines, every piece", Pieces(large, u"\n", 40, 1), u"\n", kEveryPiece},
      {"large CRLF lines, positional", Pieces(large, u"\r\n", 30, 2), u"\r\n", kPositionalReach},
      {"large, reach 7", Pieces(large, u"\r\n", 5, 3), u"\r\n", 7},
      {"large, long separator", Pieces(large, u"<sep/>", 9, 4), u"<sep/>", 100},
      {"large, self-overlapping separator", Pieces(large, u"aba", 4, 5), u"aba", 50},
      {"large, separators in the first stretch", sparse, u";", 2},
      {"large, separators at the end", tailOnly, u";", 1},
      {"large, separators at the end, every piece", tailOnly, u";", kEveryPiece},
  };
}

// What a cut of the text gives for the pieces within its reach: their places and sizes.
std::vector<std::pair<std::size_t, std::size_t>> PiecesInReach(const PieceCut& cut, std::size_t reach) {
  std::vector<std::pair<std::size_t, std::size_t>> pieces;
  const std::size_t last = cut.LastIndex();
  for (std::size_t i = 0; i <= last; ++i) {
    if (i >= reach && last - i >= reach) i = last - reach + 1;
    const TextView piece = cut.Piece(i);
    pieces.emplace_back(static_cast<std::size_t>(piece.data() - cut.Whole().data()), piece.size());
  }
  return pieces;
}

TEST(PieceCut, AgreesWithOneSearchAtATimeWhereverItReaches) {
  for (const CutCase& c : CutCases()) {
    SCOPED_TRACE(c.name);
    const std::vector<std::size_t> ends = ReferenceEnds(c.text, c.separator);
    const PieceCut cut(c.text, c.separator, c.reach);
    ASSERT_EQ(cut.LastIndex(), ends.size());
    const auto reference = [&](std::size_t first, std::size_t last) {
      const std::size_t begin = first == 0 ? 0 : ends[first - 1];
      return TextView(c.text).substr(begin, (last < ends.size() ? ends[last] : c.text.size()) - begin);
    };
    const std::size_t last = cut.LastIndex();
    const std::size_t reach = std::min(c.reach, last + 1);
    for (std::size_t i = 0; i < reach; ++i) {
      ASSERT_EQ(cut.Piece(i), reference(i, i)) << "piece " << i;
      ASSERT_EQ(cut.Piece(last - i), reference(last - i, last - i)) << "piece " << last - i;
    }
    EXPECT_EQ(cut.Range(0, last), TextView(c.text));
    if (reach > 1) {
      EXPECT_EQ(cut.Range(1, last - 1), reference(1, last - 1));
    }
  }
}

// A text given to the scanner in parts, as a variable is read without being kept: every
// separator is found, those across parts and those longer than a part too.
TEST(PieceCut, ScannedInPartsAsWhole) {
  std::vector<CutCase> cases = CutCases();
  cases.push_back({"separators across parts", u"ab<sep/>cd<sep/><sep/>e<se<sep/>", u"<sep/>", kEveryPiece});
  cases.push_back({"empty separator", u"a;b", u"", kPositionalReach});
  for (const CutCase& c : cases) {
    const std::size_t longest = c.text.size() > 1000 ? 300000 : 9;
    for (const std::size_t seed : {1u, 2u, 3u}) {
      SCOPED_TRACE(std::string(c.name) + ", seed " + std::to_string(seed));
      std::mt19937 random(static_cast<std::uint32_t>(seed));
      PieceScanner scanner(c.separator, c.reach);
      for (std::size_t at = 0; at < c.text.size();) {
        const std::size_t part = std::min<std::size_t>(c.text.size() - at, random() % longest + 1);
        scanner.ScanNext(TextView(c.text).substr(at, part));
        at += part;
      }
      scanner.FinishParts(c.text);
      ASSERT_TRUE(scanner.SawWhole(c.text));
      const PieceCut scanned(c.text, std::move(scanner));
      const PieceCut whole(c.text, c.separator, c.reach);
      ASSERT_EQ(scanned.LastIndex(), whole.LastIndex());
      EXPECT_EQ(PiecesInReach(scanned, c.reach), PiecesInReach(whole, c.reach));
    }
  }
}

TEST(PieceCut, TheEmptySeparatorLeavesOnePiece) {
  const PieceCut cut(u"a;b", u"", kPositionalReach);
  EXPECT_EQ(cut.LastIndex(), 0u);
  EXPECT_EQ(cut.Piece(0), u"a;b");
}

}  // namespace
}  // namespace nv
