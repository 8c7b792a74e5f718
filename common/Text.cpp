#include "common/Text.h"

namespace nv {

Text DecimalText(std::int64_t value) {
  Text result;
  AppendDecimal(result, value);
  return result;
}

void AppendDecimal(Text& text, std::int64_t value) {
  // Widen before negating: the most negative value has no positive counterpart.
  const bool negative = value < 0;
  std::uint64_t magnitude = negative ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
  char16_t digits[24];
  int count = 0;
  do {
    digits[count++] = static_cast<char16_t>(u'0' + magnitude % 10);
    magnitude /= 10;
  } while (magnitude != 0);
  if (negative) text.push_back(u'-');
  while (count > 0) text.push_back(digits[--count]);
}

}  // namespace nv
