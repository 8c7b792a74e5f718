#pragma once
// Function 0: cut a text at every occurrence of a separator.
#include <vector>

#include "common/Text.h"

namespace nv {

// Fills `pieces` (from index 0, never empty) with the text between the separators, left to
// right without overlap; the separators belong to no piece and empty pieces stay. `text` ends
// holding the last piece. The empty separator is found before every unit: a text of L units
// gives L + 1 empty pieces.
void SplitBySeparator(Text& text, TextView separator, std::vector<Text>& pieces);

// The same pieces as views into `text`, which must outlive them: for a caller that copies
// each piece elsewhere anyway (into a host variable) and need not pay for two copies.
std::vector<TextView> SplitViews(TextView text, TextView separator);

}  // namespace nv
