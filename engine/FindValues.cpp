#include "engine/FindValues.h"

#include "common/CaseMapping.h"
#include "common/Error.h"
#include "engine/Mask.h"
#include "engine/Saturate.h"

namespace nv {

void FindValues(Text& text, Text& mask, TextView filter, std::int16_t& start, std::int16_t& end, bool caseSensitive,
                bool trim, std::vector<TextView>& values) {
  values.assign(1, TextView());
  const auto length = static_cast<std::int64_t>(text.size());
  const std::int64_t first = start == 0 ? 1 : start;
  std::int64_t last = end == 0 ? -1 : end;
  if (last < 0) last = length + 1 + last;
  start = SaturateToInt16(first);
  end = SaturateToInt16(last);
  if (first < 0 || last < first - 1) RaiseError(ErrorNumber::InvalidProcedureCall);

  // Keep units first..last, in place: the usual call keeps the whole text and copies nothing.
  if (first > length) {
    text.clear();
  } else {
    if (last < length) text.resize(static_cast<std::size_t>(last));
    text.erase(0, static_cast<std::size_t>(first - 1));
  }

  if (!caseSensitive) UpperCaseInPlace(mask);
  MatchMask(text, !caseSensitive, SplitMask(mask, filter), trim, values);
}

}  // namespace nv
