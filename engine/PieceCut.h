#pragma once
// The pieces of one text for one separator, found once and shared by every field that an
// execution extracts from that text.
#include <cstddef>
#include <vector>

#include "common/Text.h"

namespace nv {

// Pieces end just after each occurrence of the separator (left to right, no overlap) and
// keep it; the last piece is the rest of the text, possibly empty. The empty separator
// does not cut: the whole text is the one piece.
//
// The cut holds views: the text and the separator must outlive it.
class PieceCut {
 public:
  PieceCut(TextView text, TextView separator);

  TextView Whole() const noexcept { return text_; }
  TextView Separator() const noexcept { return separator_; }
  // Index of the last piece (the piece count less one).
  std::size_t LastIndex() const noexcept { return ends_.size(); }
  // Pieces `first` through `last` joined; requires first <= last <= LastIndex().
  TextView Range(std::size_t first, std::size_t last) const noexcept;
  TextView Piece(std::size_t index) const noexcept { return Range(index, index); }

 private:
  TextView text_;
  TextView separator_;
  std::vector<std::size_t> ends_;  // end of every piece but the last
};

}  // namespace nv
