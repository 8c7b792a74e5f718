#include "tests/engine/reference/BasicText.h"

#include <algorithm>

#include "common/Error.h"

namespace nv::reference {

std::int64_t Len(const Text& text) { return static_cast<std::int64_t>(text.size()); }

Text Left(const Text& text, std::int64_t count) { return Mid(text, 1, count); }

Text Right(const Text& text, std::int64_t count) { return Mid(text, std::max<std::int64_t>(1, Len(text) - count + 1)); }

Text Mid(const Text& text, std::int64_t start, std::int64_t count) {
  if (start < 1 || count < 0) RaiseError(ErrorNumber::InvalidProcedureCall);
  if (start > Len(text)) return Text();
  return text.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(count));
}

Text Mid(const Text& text, std::int64_t start) { return Mid(text, start, Len(text)); }

std::int64_t InStr(std::int64_t start, const Text& text, const Text& needle) {
  if (start > Len(text)) return 0;
  for (std::int64_t p = start; p + Len(needle) - 1 <= Len(text); ++p) {
    bool same = true;
    for (std::int64_t k = 0; k < Len(needle) && same; ++k)
      same = text[static_cast<std::size_t>(p - 1 + k)] == needle[static_cast<std::size_t>(k)];
    if (same) return p;
  }
  return 0;
}

}  // namespace nv::reference
