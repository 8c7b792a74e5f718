#include "engine/Mask.h"

#include <cstddef>
#include <utility>

#include "engine/Scan.h"

namespace nv {
namespace {

TextView TrimSpaces(TextView value) noexcept {
  const std::size_t begin = value.find_first_not_of(u' ');
  if (begin == TextView::npos) return {};
  return value.substr(begin, value.find_last_not_of(u' ') - begin + 1);
}

}  // namespace

std::vector<TextView> SplitMask(TextView mask, TextView filter) {
  std::vector<TextView> parts;
  if (filter.empty()) {
    parts.push_back(mask);
    return parts;
  }
  std::size_t from = 0;
  for (std::size_t at; (at = FindFrom(mask, from, filter)) != NotFound; from = at + filter.size())
    parts.push_back(mask.substr(from, at - from));
  parts.push_back(mask.substr(from));
  return parts;
}

bool MatchMask(TextView text, TextView workText, std::span<const TextView> literalParts, bool trim,
               std::vector<TextView>& values) {
  std::vector<TextView> found;
  const auto lastPart = static_cast<std::ptrdiff_t>(literalParts.size()) - 1;
  if (literalParts.size() == 2 && literalParts[0].empty() && literalParts[1].empty()) {
    found.push_back(text);  // the mask is the filter alone
  } else {
    const bool literalFirst = !literalParts.front().empty();
    const bool literalLast = !literalParts.back().empty();
    const std::ptrdiff_t first = literalFirst ? 0 : 1;
    const std::ptrdiff_t last = literalLast ? lastPart : lastPart - 1;
    if (literalFirst && !workText.starts_with(literalParts[static_cast<std::size_t>(first)])) return false;
    if (literalLast && !workText.ends_with(literalParts[static_cast<std::size_t>(last)])) return false;

    std::size_t rest = 0;  // where the text not yet consumed begins
    for (std::ptrdiff_t i = first; i <= last; ++i) {
      const TextView literal = literalParts[static_cast<std::size_t>(i)];
      const std::size_t at = FindFrom(workText, rest, literal);
      if (at == NotFound) return false;
      const TextView before = text.substr(rest, at - rest);
      if ((i == first && !literalFirst) || (first < i && i < last) || (i == last && last != first))
        found.push_back(before);
      rest = at + literal.size();
      if (i == last && !literalLast) found.push_back(text.substr(rest));
    }
  }
  if (trim) {
    for (TextView& value : found) value = TrimSpaces(value);
  }
  values = std::move(found);
  return true;
}

}  // namespace nv
