#include "engine/Mask.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "common/CaseMapping.h"
#include "engine/Scan.h"

namespace nv {
namespace {

TextView TrimSpaces(TextView value) noexcept {
  const std::size_t begin = value.find_first_not_of(u' ');
  if (begin == TextView::npos) return {};
  return value.substr(begin, value.find_last_not_of(u' ') - begin + 1);
}

// The text the literal parts are looked for in: the text itself, or its upper-case form.
// That form is made a window at a time as the search moves forward, never whole:
// upper-casing maps each unit on its own, so a window's form is the same stretch of the
// whole one. A mask matched near the start of a log of many MiB then upper-cases little of
// it, no copy of its size is made, and literals found close together share one window.
class WorkText {
 public:
  WorkText(TextView text, bool upperCased) : text_(text), upperCased_(upperCased) {}

  bool StartsWith(TextView literal) const noexcept {
    return literal.size() <= text_.size() && SameAt(0, literal);
  }
  bool EndsWith(TextView literal) const noexcept {
    return literal.size() <= text_.size() && SameAt(text_.size() - literal.size(), literal);
  }

  // The first occurrence of `literal` at or after `from`, as FindFrom finds it.
  std::size_t FindFrom(std::size_t from, TextView literal) {
    if (!upperCased_ || literal.empty()) return nv::FindFrom(text_, from, literal);
    while (from < text_.size()) {
      if (from < begin_ || from >= begin_ + window_.size()) Fill(from, literal.size());
      const std::size_t at = nv::FindFrom(window_, from - begin_, literal);
      if (at != NotFound) return begin_ + at;
      const std::size_t windowEnd = begin_ + window_.size();
      if (windowEnd == text_.size()) break;
      // Every start from which the literal fits in the window has been looked at.
      from = std::max(from, windowEnd - std::min(windowEnd, literal.size() - 1));
      Fill(from, literal.size());
    }
    return NotFound;
  }

 private:
  static constexpr std::size_t kWindowUnits = std::size_t{1} << 16;  // 128 KiB: stays in cache

  // At least twice the literal, so that a search that fails moves past it.
  void Fill(std::size_t from, std::size_t literalUnits) {
    begin_ = from;
    window_.assign(text_.substr(from, std::max(kWindowUnits, 2 * literalUnits)));
    UpperCaseInPlace(window_);
  }

  bool SameAt(std::size_t at, TextView literal) const noexcept {
    for (std::size_t i = 0; i < literal.size(); ++i) {
      const char16_t unit = text_[at + i];
      if ((upperCased_ ? UpperChar(unit) : unit) != literal[i]) return false;
    }
    return true;
  }

  TextView text_;
  bool upperCased_;
  std::size_t begin_ = 0;  // of the window in the text
  Text window_;            // the upper-case form of the text from begin_
};

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

bool MatchMask(TextView text, bool upperCased, std::span<const TextView> literalParts, bool trim,
               std::vector<TextView>& values) {
  WorkText workText(text, upperCased);
  std::vector<TextView> found;
  const auto lastPart = static_cast<std::ptrdiff_t>(literalParts.size()) - 1;
  if (literalParts.size() == 2 && literalParts[0].empty() && literalParts[1].empty()) {
    found.push_back(text);  // the mask is the filter alone
  } else {
    const bool literalFirst = !literalParts.front().empty();
    const bool literalLast = !literalParts.back().empty();
    const std::ptrdiff_t first = literalFirst ? 0 : 1;
    const std::ptrdiff_t last = literalLast ? lastPart : lastPart - 1;
    if (literalFirst && !workText.StartsWith(literalParts[static_cast<std::size_t>(first)])) return false;
    if (literalLast && !workText.EndsWith(literalParts[static_cast<std::size_t>(last)])) return false;

    std::size_t rest = 0;  // where the text not yet consumed begins
    for (std::ptrdiff_t i = first; i <= last; ++i) {
      const TextView literal = literalParts[static_cast<std::size_t>(i)];
      const std::size_t at = workText.FindFrom(rest, literal);
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
