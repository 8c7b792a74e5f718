#include "engine/Split.h"

#include "engine/PieceCut.h"

namespace nv {

void SplitBySeparator(Text& text, TextView separator, SplitPieces& pieces) {
  // The text moves into the pieces (its buffer with it, so no unit is copied) and gets back
  // only its last piece.
  pieces.source_ = std::move(text);
  pieces.views_ = SplitViews(pieces.source_, separator);
  text.assign(pieces.views_.back());
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
