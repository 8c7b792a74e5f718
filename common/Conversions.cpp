#include "common/Conversions.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "common/CaseMapping.h"
#include "common/Error.h"
#include "common/SystemLocale.h"

namespace nv {
namespace {

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }

TextView TrimBlanks(TextView text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

int DigitValue(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return 99;
}

// &Hxxxx / &Oxxx / &xxx: up to 16 bits reads as a signed 16-bit pattern, as the runtime's
// literals do ("&HFFFF" is -1), up to 32 bits as a signed 32-bit pattern.
std::optional<double> ParseRadix(TextView digits, int radix) {
  if (digits.empty()) return std::nullopt;
  std::uint64_t value = 0;
  for (const char16_t c : digits) {
    const int d = DigitValue(c);
    if (d >= radix) return std::nullopt;
    value = value * static_cast<unsigned>(radix) + static_cast<unsigned>(d);
    if (value > 0xFFFFFFFFull) return std::nullopt;
  }
  if (value <= 0xFFFF) return static_cast<double>(static_cast<std::int16_t>(static_cast<std::uint16_t>(value)));
  return static_cast<double>(static_cast<std::int32_t>(static_cast<std::uint32_t>(value)));
}

// Whole numbers of up to 15 digits, as task fields hold them ("999", "-101"), are exact in a
// double: summed here, they skip the general conversion, which a task of 1,000 fields makes
// thousands of times a run.
std::optional<double> ParseWholeNumber(TextView text) {
  std::size_t i = text.empty() || (text[0] != u'+' && text[0] != u'-') ? 0 : 1;
  if (i == text.size() || text.size() - i > 15) return std::nullopt;
  double value = 0;
  for (std::size_t j = i; j < text.size(); ++j) {
    if (text[j] < u'0' || text[j] > u'9') return std::nullopt;
    value = value * 10 + (text[j] - u'0');
  }
  return i == 1 && text[0] == u'-' ? -value : value;
}

std::optional<double> ParseDecimal(TextView text) {
  if (const auto whole = ParseWholeNumber(text)) return whole;
  std::string ascii;
  std::size_t i = 0;
  if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) ascii.push_back(static_cast<char>(text[i++]));
  std::size_t digits = 0;
  while (i < text.size() && text[i] >= u'0' && text[i] <= u'9') ascii.push_back(static_cast<char>(text[i++])), ++digits;
  if (i < text.size() && text[i] == u'.') {
    ascii.push_back('.');
    ++i;
    while (i < text.size() && text[i] >= u'0' && text[i] <= u'9') ascii.push_back(static_cast<char>(text[i++])), ++digits;
  }
  if (digits == 0) return std::nullopt;
  if (i < text.size() && (text[i] == u'e' || text[i] == u'E' || text[i] == u'd' || text[i] == u'D')) {
    ascii.push_back('e');
    ++i;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) ascii.push_back(static_cast<char>(text[i++]));
    std::size_t exponentDigits = 0;
    while (i < text.size() && text[i] >= u'0' && text[i] <= u'9') ascii.push_back(static_cast<char>(text[i++])), ++exponentDigits;
    if (exponentDigits == 0) return std::nullopt;
  }
  if (i != text.size()) return std::nullopt;
  return std::strtod(ascii.c_str(), nullptr);
}

template <typename Int>
Int RoundToRange(double number) {
  const double rounded = std::nearbyint(number);  // the default mode sends halves to even
  if (!(rounded >= static_cast<double>(std::numeric_limits<Int>::min()) &&
        rounded <= static_cast<double>(std::numeric_limits<Int>::max()))) {
    RaiseError(ErrorNumber::Overflow);
  }
  return static_cast<Int>(rounded);
}

// A word of the truth values compared without case, with no copy made.
bool IsWord(TextView text, std::u16string_view upper) {
  if (text.size() != upper.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (UpperChar(text[i]) != upper[i]) return false;
  }
  return true;
}

template <typename Int>
Int ConvertText(TextView text) {
  const auto number = ParseNumber(text);
  if (!number) RaiseError(ErrorNumber::TypeMismatch);
  return RoundToRange<Int>(*number);
}

template <typename Int>
Int ConvertVariant(const Variant& value) {
  switch (value.GetKind()) {
    case Variant::Kind::Empty: return 0;
    case Variant::Kind::Long: return RoundToRange<Int>(value.LongValue());
    case Variant::Kind::String: break;
  }
  return ConvertText<Int>(value.TextValue());
}

}  // namespace

std::optional<double> ParseNumber(TextView text) {
  text = TrimBlanks(text);
  if (text.size() >= 2 && text[0] == u'&') {
    const char16_t kind = UpperChar(text[1]);
    if (kind == u'H') return ParseRadix(text.substr(2), 16);
    if (kind == u'O') return ParseRadix(text.substr(2), 8);
    return ParseRadix(text.substr(1), 8);
  }
  return ParseDecimal(text);
}

bool IsNumeric(TextView text) { return ParseNumber(text).has_value(); }

bool IsNumeric(const Variant& value) { return !value.IsText() || IsNumeric(value.TextValue()); }

std::int16_t ToInteger(const Variant& value) { return ConvertVariant<std::int16_t>(value); }
std::int16_t ToInteger(TextView text) { return ConvertText<std::int16_t>(text); }
std::optional<std::int16_t> IntegerIfNumeric(TextView text) {
  const auto number = ParseNumber(text);
  if (!number) return std::nullopt;
  return RoundToRange<std::int16_t>(*number);
}
std::int32_t ToLong(const Variant& value) { return ConvertVariant<std::int32_t>(value); }
std::int32_t ToLong(TextView text) { return ConvertText<std::int32_t>(text); }

bool ToBoolean(TextView text) {
  const TextView word = TrimBlanks(text);
  if (IsWord(word, u"TRUE") || IsWord(word, u"VRAI")) return true;
  if (IsWord(word, u"FALSE") || IsWord(word, u"FAUX")) return false;
  const auto number = ParseNumber(word);
  if (!number) RaiseError(ErrorNumber::TypeMismatch);
  return *number != 0;
}

bool ToBoolean(const Variant& value) {
  switch (value.GetKind()) {
    case Variant::Kind::Empty: return false;
    case Variant::Kind::Long: return value.LongValue() != 0;
    case Variant::Kind::String: break;
  }
  return ToBoolean(value.TextValue());
}

Text ToText(const Variant& value) {
  switch (value.GetKind()) {
    case Variant::Kind::Empty: return {};
    case Variant::Kind::Long: return DecimalText(value.LongValue());
    case Variant::Kind::String: break;
  }
  return value.TextValue();
}

Text ToText(Variant&& value) {
  if (value.IsText()) return std::move(value).TakeText();
  return ToText(static_cast<const Variant&>(value));
}

Text BooleanText(bool value) {
  if (SystemUsesFrenchWords()) return value ? u"Vrai" : u"Faux";
  return value ? u"True" : u"False";
}

}  // namespace nv
