#pragma once
// The two steps of function 2: cutting a mask into its literal parts, and matching the
// parts against a text.
#include <span>
#include <vector>

#include "common/Text.h"

namespace nv {

// The parts of `mask` between the occurrences of `filter` (left to right, no overlap), as
// views into `mask`; k placeholders give k + 1 parts, possibly empty. The empty filter
// marks nothing: the whole mask is the one part.
std::vector<TextView> SplitMask(TextView mask, TextView filter);

// Finds each literal part (at least one, as SplitMask gives them) in `text`, or in its
// upper-case form when `upperCased` (the parts are then expected in upper case), in order,
// at its first occurrence after the previous one, and collects the text between them,
// in its own case. A mask starting (ending) with a literal requires the text to start
// (end) with it.
// On a match `values` receives one value per placeholder (none for a mask without
// placeholder), each without leading and trailing spaces when `trim`; otherwise `values`
// is left as it was and the result is false. The values are views into `text`.
bool MatchMask(TextView text, bool upperCased, std::span<const TextView> literalParts, bool trim,
               std::vector<TextView>& values);

}  // namespace nv
