#pragma once
// The automation runtime's conversions, in one place: nothing else parses numbers or
// truth values out of text.
#include <cstdint>
#include <optional>

#include "common/Text.h"
#include "common/Variant.h"

namespace nv {

// The number a text stands for: spaces around, a sign, digits with a decimal point and an
// exponent (e or d), or &H / &O prefixed hexadecimal and octal. Nothing for anything else.
std::optional<double> ParseNumber(TextView text);

bool IsNumeric(TextView text);
bool IsNumeric(const Variant& value);  // Empty is numeric (it converts to 0)

// To a 16-bit integer: halves round to the even neighbour; outside -32768..32767 is an
// overflow error, a text that is no number a type mismatch.
std::int16_t ToInteger(const Variant& value);
std::int16_t ToInteger(TextView text);
// ToInteger of a numeric text in one reading; nothing for a text that is no number.
std::optional<std::int16_t> IntegerIfNumeric(TextView text);
std::int32_t ToLong(const Variant& value);
std::int32_t ToLong(TextView text);

// "True", "False", "Vrai", "Faux" in any case, or a number (non-zero is true).
bool ToBoolean(const Variant& value);
bool ToBoolean(TextView text);

Text ToText(const Variant& value);
Text ToText(Variant&& value);

// A truth value as the system writes it: "True"/"False", or "Vrai"/"Faux" on a French system.
Text BooleanText(bool value);

// The 16-bit Boolean of records and of the COM boundary.
constexpr std::int16_t kTrue = -1;
constexpr std::int16_t kFalse = 0;
constexpr std::int16_t AsVbBoolean(bool value) { return value ? kTrue : kFalse; }

}  // namespace nv
