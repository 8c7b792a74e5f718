#include "engine/ExtractPieces.h"

#include "common/Error.h"
#include "engine/Saturate.h"

namespace nv {

TextView ExtractPieces(const PieceCut& cut, std::int16_t& start, std::int16_t& end, bool showSeparators) {
  const auto lastIndex = static_cast<std::int64_t>(cut.LastIndex());
  const bool wholeText = start == 0 && end == 0;
  const std::int64_t first = start < 0 ? lastIndex + 1 + start : start;
  const std::int64_t last = end > 0 ? end - 1 : lastIndex + end;
  start = SaturateToInt16(first);
  end = SaturateToInt16(last);

  if (!wholeText && (last > lastIndex || last < first || cut.Whole().empty())) return {};
  if (first < 0) RaiseError(ErrorNumber::SubscriptOutOfRange);

  const TextView separator = cut.Separator();
  TextView range = cut.Range(static_cast<std::size_t>(first), static_cast<std::size_t>(last));
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

TextView ExtractPieces(TextView text, TextView separator, std::int16_t& start, std::int16_t& end,
                       bool showSeparators) {
  return ExtractPieces(PieceCut(text, separator, kPositionalReach), start, end, showSeparators);
}

}  // namespace nv
