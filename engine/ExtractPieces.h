#pragma once
// Function 1: the text of one field, a range of consecutive pieces of the string.
#include <cstddef>
#include <cstdint>

#include "common/Text.h"
#include "engine/PieceCut.h"

namespace nv {

// How far from either end of a cut its pieces are named by 16-bit positions: a cut made with
// this reach serves every field.
inline constexpr std::size_t kPositionalReach = 32769;

// `start` is the 0-based index of the first piece (negative: from the end, -1 the last);
// `end` the 1-based number of the last piece (0 or negative: from the end, 0 the last).
// Both are written back resolved to 0-based indices of the first and last piece. With
// `showSeparators` false one separator is removed from each end of the result; with it
// true and a range not starting at piece 0, a separator is put in front when missing.
// An empty or reversed range gives the empty text (start = end = 0 always gives the whole
// text). Fails with SubscriptOutOfRange when start resolves below 0 and the range is not
// empty. The result is a view into the cut's text, the separator put in front included: it
// is the one that ends the piece before the range.
TextView ExtractPieces(const PieceCut& cut, std::int16_t& start, std::int16_t& end, bool showSeparators);

// The units of the cut's text that ExtractPieces reads and gives back for the same start and
// end, which it resolves and writes back in the same way: its range and the separator
// before it. Empty when it gives the empty text; fails as it fails.
struct UnitSpan {
  std::size_t begin = 0;
  std::size_t end = 0;
};
UnitSpan ExtractedSpan(const PieceCut& cut, std::int16_t& start, std::int16_t& end);

// The same on a cut made for this one call; the result is a view into `text`.
TextView ExtractPieces(TextView text, TextView separator, std::int16_t& start, std::int16_t& end,
                       bool showSeparators);

}  // namespace nv
