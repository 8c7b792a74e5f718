#include "tests/engine/reference/Reference.h"

#include <algorithm>
#include <limits>

#include "common/CaseMapping.h"
#include "common/Error.h"
#include "tests/engine/reference/BasicText.h"

namespace nv::reference {
namespace {

// Write-back into a 16-bit variable keeps the nearest value (texts longer than 16 bits count).
std::int16_t Store16(std::int64_t value) {
  return static_cast<std::int16_t>(std::clamp<std::int64_t>(value, std::numeric_limits<std::int16_t>::min(),
                                                            std::numeric_limits<std::int16_t>::max()));
}

const Text& Element(const std::vector<Text>& list, std::int64_t index) {
  if (index < 0 || index >= static_cast<std::int64_t>(list.size())) RaiseError(ErrorNumber::SubscriptOutOfRange);
  return list[static_cast<std::size_t>(index)];
}

Text TrimSpaces(Text value) {
  while (!value.empty() && value.front() == u' ') value.erase(0, 1);
  while (!value.empty() && value.back() == u' ') value.pop_back();
  return value;
}

}  // namespace

void SplitBySeparator(Text& text, const Text& separator, std::vector<Text>& pieces) {
  pieces.assign(1, Text());
  std::size_t n = 0;
  const std::int64_t length = Len(separator);
  for (;;) {
    const std::int64_t p = InStr(1, text, separator);
    if (p > 0) {
      pieces[n] = Left(text, p - 1);
      text = Mid(text, p + length, Len(text) - p);
      pieces.emplace_back();
      ++n;
    } else {
      pieces[n] = text;
      return;
    }
  }
}

Text ExtractPieces(const Text& text, const Text& separator, std::int16_t& start, std::int16_t& end,
                   bool showSeparators) {
  const bool wholeText = start == 0 && end == 0;
  // 1. Cut into pieces; the empty separator does not cut.
  std::vector<Text> pieces;
  if (separator.empty()) {
    pieces.push_back(text);
  } else {
    std::int64_t s = 1;
    for (;;) {
      const std::int64_t p = InStr(s, text, separator);
      if (p > 0) {
        pieces.push_back(Mid(text, s, p + Len(separator) - s));
        s = p + Len(separator);
      } else {
        pieces.push_back(Mid(text, s));
        break;
      }
    }
  }
  const auto u = static_cast<std::int64_t>(pieces.size()) - 1;
  // 2. Resolve.
  std::int64_t first = start;
  std::int64_t last = end;
  if (first < 0) first = u + 1 + first;
  if (last > 0)
    last = last - 1;
  else
    last = u + last;
  start = Store16(first);
  end = Store16(last);
  // 3. Empty range.
  if (!wholeText && (last > u || last < first || (u == 0 && pieces[0].empty()))) return Text();
  // 4. Join.
  Text result;
  for (std::int64_t i = first; i <= last; ++i) result += Element(pieces, i);
  // 5, 6. Separators around the range.
  if (!showSeparators) {
    if (Right(result, Len(separator)) == separator) result = Left(result, Len(result) - Len(separator));
    if (Left(result, Len(separator)) == separator) result = Mid(result, Len(separator) + 1);
  } else if (first > 0) {
    if (Left(result, Len(separator)) != separator) result = separator + result;
  }
  return result;
}

std::vector<Text> SplitMask(const Text& mask, const Text& filter) {
  if (filter.empty()) return {mask};
  std::vector<Text> parts;
  Text rest = mask;
  for (;;) {
    const std::int64_t p = InStr(1, rest, filter);
    if (p == 0) {
      parts.push_back(rest);
      return parts;
    }
    parts.push_back(Left(rest, p - 1));
    rest = Mid(rest, p + Len(filter));
  }
}

bool MatchMask(Text text, Text workText, const std::vector<Text>& literalParts, bool trim, std::vector<Text>& values) {
  Text& t = text;
  Text& w = workText;
  const auto u = static_cast<std::int64_t>(literalParts.size()) - 1;
  std::vector<Text> collected;
  if (literalParts.size() == 2 && literalParts[0].empty() && literalParts[1].empty()) {
    collected.push_back(t);
  } else {
    const bool a = !literalParts[0].empty();
    const std::int64_t first = a ? 0 : 1;
    const bool z = !Element(literalParts, u).empty();
    const std::int64_t last = z ? u : u - 1;
    if (a && Left(w, Len(Element(literalParts, first))) != Element(literalParts, first)) return false;
    if (z && Right(w, Len(Element(literalParts, last))) != Element(literalParts, last)) return false;
    for (std::int64_t i = first; i <= last; ++i) {
      const Text& literal = Element(literalParts, i);
      const std::int64_t p = InStr(1, w, literal);
      if (p == 0) return false;
      if (i == first && !a) collected.push_back(Left(t, p - 1));
      if (first < i && i < last) collected.push_back(Left(t, p - 1));
      if (i == last) {
        if (last != first) collected.push_back(Left(t, p - 1));
        if (!z) collected.push_back(Mid(t, p + Len(literal)));
      }
      t = Mid(t, p + Len(literal));
      w = Mid(w, p + Len(literal));
    }
  }
  values.clear();
  for (const Text& value : collected) values.push_back(trim ? TrimSpaces(value) : value);
  return true;
}

void FindValues(Text& text, Text& mask, const Text& filter, std::int16_t& start, std::int16_t& end, bool caseSensitive,
                bool trim, std::vector<Text>& values) {
  values.assign(1, Text());
  const std::int64_t length = Len(text);
  std::int64_t first = start;
  std::int64_t last = end;
  if (first == 0) first = 1;
  if (last == 0) last = -1;
  if (last < 0) last = length + 1 + last;
  start = Store16(first);
  end = Store16(last);
  text = Mid(text, first, last - first + 1);

  Text workText = text;
  if (!caseSensitive) {
    workText = UpperCase(text);
    mask = UpperCase(mask);
  }
  MatchMask(text, workText, SplitMask(mask, filter), trim, values);
}

}  // namespace nv::reference
