#pragma once
// Function 2: read values out of a text by a mask in which each occurrence of a filter text
// marks one value.
#include <cstdint>
#include <vector>

#include "common/Text.h"

namespace nv {

// Uses the part of `text` from unit `start` (from 1; 0 means 1) through unit `end` (0 means
// the last unit, a negative value counts back from the end); `text` is replaced by that
// part and `start`, `end` receive the resolved positions. When not `caseSensitive`, text
// and mask are compared in upper case and `mask` is replaced by its upper-case form (the
// filter is taken as given). `values` receives one value per placeholder on a match (an
// empty list for a matching mask without placeholder) and one empty value otherwise.
// Fails with InvalidProcedureCall for a negative start or a negative unit count. The values
// are views into `text` as it is on return.
void FindValues(Text& text, Text& mask, TextView filter, std::int16_t& start, std::int16_t& end, bool caseSensitive,
                bool trim, std::vector<TextView>& values);

}  // namespace nv
