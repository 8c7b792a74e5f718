#include "engine/Split.h"

#include "engine/PieceCut.h"

namespace nv {
namespace {

// Every piece of the cut but the last, without its separator. The cut has found every
// separator in one pass, so the list is sized once: a list that grows moves every piece
// made so far into memory not touched yet, and leaves holes that later pieces must fill.
template <typename Piece>
void PiecesButLast(const PieceCut& cut, std::vector<Piece>& pieces) {
  pieces.reserve(cut.LastIndex() + 1);
  const std::size_t separatorLength = cut.Separator().size();
  for (std::size_t i = 0; i < cut.LastIndex(); ++i) {
    const TextView piece = cut.Piece(i);
    pieces.emplace_back(piece.substr(0, piece.size() - separatorLength));
  }
}

}  // namespace

void SplitBySeparator(Text& text, TextView separator, std::vector<Text>& pieces) {
  pieces.clear();
  if (separator.empty()) {
    // Each search finds the separator in front of the first unit and drops the last one.
    pieces.resize(text.size() + 1);
    text.clear();
    return;
  }
  const PieceCut cut(text, separator);
  PiecesButLast(cut, pieces);
  text.erase(0, text.size() - cut.Piece(cut.LastIndex()).size());
  pieces.push_back(text);
}

std::vector<TextView> SplitViews(TextView text, TextView separator) {
  if (separator.empty()) return std::vector<TextView>(text.size() + 1);
  const PieceCut cut(text, separator);
  std::vector<TextView> pieces;
  PiecesButLast(cut, pieces);
  pieces.push_back(cut.Piece(cut.LastIndex()));
  return pieces;
}

}  // namespace nv
