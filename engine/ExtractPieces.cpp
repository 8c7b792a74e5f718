#include "engine/ExtractPieces.h"

#include "common/Error.h"
#include "engine/Saturate.h"

namespace nv {

Text ExtractPieces(const PieceCut& cut, std::int16_t& start, std::int16_t& end, bool showSeparators) {
  const auto lastIndex = static_cast<std::int64_t>(cut.LastIndex());
  const bool wholeText = start == 0 && end == 0;
  const std::int64_t first = start < 0 ? lastIndex + 1 + start : start;
  const std::int64_t last = end > 0 ? end - 1 : lastIndex + end;
  start = SaturateToInt16(first);
  end = SaturateToInt16(last);

  if (!wholeText && (last > lastIndex || last < first || cut.Whole().empty())) return Text();
  if (first < 0) RaiseError(ErrorNumber::SubscriptOutOfRange);

  const TextView separator = cut.Separator();
  TextView range = cut.Range(static_cast<std::size_t>(first), static_cast<std::size_t>(last));
  if (!showSeparators) {
    if (range.ends_with(separator)) range.remove_suffix(separator.size());
    if (range.starts_with(separator)) range.remove_prefix(separator.size());
    return Text(range);
  }
  if (first > 0 && !range.starts_with(separator)) {
    Text result;
    result.reserve(separator.size() + range.size());
    return result.append(separator).append(range);
  }
  return Text(range);
}

Text ExtractPieces(TextView text, TextView separator, std::int16_t& start, std::int16_t& end, bool showSeparators) {
  return ExtractPieces(PieceCut(text, separator), start, end, showSeparators);
}

}  // namespace nv
