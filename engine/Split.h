#pragma once
// Function 0: cut a text at every occurrence of a separator.
#include <vector>

#include "common/Text.h"

namespace nv {

// The pieces of one split as views into the text they were cut from, which they hold: a
// caller copies each piece once, into the place where it stores it. Neither copied nor
// moved, so that the views stay valid.
class SplitPieces {
 public:
  SplitPieces() = default;
  SplitPieces(const SplitPieces&) = delete;
  SplitPieces& operator=(const SplitPieces&) = delete;

  const std::vector<TextView>& Views() const noexcept { return views_; }

 private:
  friend void SplitBySeparator(Text& text, TextView separator, SplitPieces& pieces);
  Text source_;
  std::vector<TextView> views_;
};

// Fills `pieces` (never empty) with the text between the separators, left to right without
// overlap; the separators belong to no piece and empty pieces stay. `text` ends holding the
// last piece. The empty separator is found before every unit: a text of L units gives
// L + 1 empty pieces.
void SplitBySeparator(Text& text, TextView separator, SplitPieces& pieces);

// The same pieces as views into `text`, which must outlive them.
std::vector<TextView> SplitViews(TextView text, TextView separator);

}  // namespace nv
