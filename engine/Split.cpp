#include "engine/Split.h"

namespace nv {

TextView SplitPieces::operator[](std::size_t index) const noexcept {
  if (!cut_) return {};
  TextView piece = cut_->Piece(index);
  if (index < cut_->LastIndex()) piece.remove_suffix(separator_.size());
  return piece;
}

std::vector<TextView> SplitPieces::Views() const {
  std::vector<TextView> views;
  views.reserve(count_);
  for (std::size_t i = 0; i < count_; ++i) views.push_back((*this)[i]);
  return views;
}

void SplitBySeparator(Text& text, TextView separator, SplitPieces& pieces) {
  // The text moves into the pieces (its buffer with it, so no unit is copied) and gets back
  // only its last piece.
  pieces.cut_.reset();
  pieces.source_ = std::move(text);
  pieces.separator_.assign(separator);
  if (separator.empty()) {
    pieces.count_ = pieces.source_.size() + 1;
  } else {
    pieces.cut_.emplace(pieces.source_, pieces.separator_);
    pieces.count_ = pieces.cut_->LastIndex() + 1;
  }
  text.assign(pieces[pieces.count_ - 1]);
}

std::vector<TextView> SplitViews(TextView text, TextView separator) {
  if (separator.empty()) return std::vector<TextView>(text.size() + 1);
  const PieceCut cut(text, separator);
  // The cut has found every separator in one pass, so the list is sized once.
  std::vector<TextView> pieces;
  pieces.reserve(cut.LastIndex() + 1);
  for (std::size_t i = 0; i < cut.LastIndex(); ++i) {
    const TextView piece = cut.Piece(i);
    pieces.push_back(piece.substr(0, piece.size() - separator.size()));
  }
  pieces.push_back(cut.Piece(cut.LastIndex()));
  return pieces;
}

}  // namespace nv
