#include "engine/ExtractPieces.h"

#include "common/Error.h"
#include "engine/Saturate.h"

namespace nv {

namespace {

// The pieces a field names, resolved; none when the range is empty.
struct ResolvedPieces {
  bool none;
  std::size_t first;
  std::size_t last;
};

ResolvedPieces ResolvePieces(const PieceCut& cut, std::int16_t& start, std::int16_t& end) {
  const auto lastIndex = static_cast<std::int64_t>(cut.LastIndex());
  const bool wholeText = start == 0 && end == 0;
  const std::int64_t first = start < 0 ? lastIndex + 1 + start : start;
  const std::int64_t last = end > 0 ? end - 1 : lastIndex + end;
  start = SaturateToInt16(first);
  end = SaturateToInt16(last);

  if (!wholeText && (last > lastIndex || last < first || cut.Whole().empty())) return {true, 0, 0};
  if (first < 0) RaiseError(ErrorNumber::SubscriptOutOfRange);
  return {false, static_cast<std::size_t>(first), static_cast<std::size_t>(last)};
}

}  // namespace

TextView ExtractPieces(const PieceCut& cut, std::int16_t& start, std::int16_t& end, bool showSeparators) {
  const ResolvedPieces pieces = ResolvePieces(cut, start, end);
  if (pieces.none) return {};
  const std::size_t first = pieces.first;
  const std::size_t last = pieces.last;

  const TextView separator = cut.Separator();
  TextView range = cut.Range(first, last);
  if (!showSeparators) {
    if (range.ends_with(separator)) range.remove_suffix(separator.size());
    if (range.starts_with(separator)) range.remove_prefix(separator.size());
    return range;
  }
  if (first > 0 && !range.starts_with(separator)) {
    // Piece first - 1 is not the last one, so it ends with the separator, just before the range.
    const auto offset = static_cast<std::size_t>(range.data() - cut.Whole().data());
    return cut.Whole().substr(offset - separator.size(), separator.size() + range.size());
  }
  return range;
}

UnitSpan ExtractedSpan(const PieceCut& cut, std::int16_t& start, std::int16_t& end) {
  const ResolvedPieces pieces = ResolvePieces(cut, start, end);
  if (pieces.none) return {};
  const TextView range = cut.Range(pieces.first, pieces.last);
  const auto offset = static_cast<std::size_t>(range.data() - cut.Whole().data());
  // Piece first - 1, when there is one, ends with the separator just before the range.
  return {pieces.first > 0 ? offset - cut.Separator().size() : offset, offset + range.size()};
}

TextView ExtractPieces(TextView text, TextView separator, std::int16_t& start, std::int16_t& end,
                       bool showSeparators) {
  return ExtractPieces(PieceCut(text, separator, kPositionalReach), start, end, showSeparators);
}

}  // namespace nv
