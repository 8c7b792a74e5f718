#pragma once
// Function 0: cut a text at every occurrence of a separator.
#include <cstddef>
#include <optional>
#include <vector>

#include "common/Text.h"
#include "engine/PieceCut.h"

namespace nv {

// The pieces of one split, read as views into the text they were cut from, which they hold:
// a caller copies each piece once, into the place where it stores it. Only the cut's offsets
// are kept, four bytes a piece. Neither copied nor moved, so that the views stay valid.
class SplitPieces {
 public:
  SplitPieces() = default;
  SplitPieces(const SplitPieces&) = delete;
  SplitPieces& operator=(const SplitPieces&) = delete;

  std::size_t size() const noexcept { return count_; }
  // Piece `index`, below size(), without its separator.
  TextView operator[](std::size_t index) const noexcept;
  // All of them, listed.
  std::vector<TextView> Views() const;

 private:
  friend void SplitBySeparator(Text& text, TextView separator, SplitPieces& pieces);
  Text source_;
  Text separator_;
  std::optional<PieceCut> cut_;  // none for the empty separator: every piece is empty
  std::size_t count_ = 0;
};

// Fills `pieces` (never empty) with the text between the separators, left to right without
// overlap; the separators belong to no piece and empty pieces stay. `text` ends holding the
// last piece. The empty separator is found before every unit: a text of L units gives
// L + 1 empty pieces.
void SplitBySeparator(Text& text, TextView separator, SplitPieces& pieces);

// The same pieces as views into `text`, which must outlive them.
std::vector<TextView> SplitViews(TextView text, TextView separator);

}  // namespace nv
