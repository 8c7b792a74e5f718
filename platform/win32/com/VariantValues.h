#pragma once
// VARIANTs as the host's classes take and give them, and the system's values they carry.
#include <windows.h>
#include <oleauto.h>

#include <cstdint>

#include "common/Text.h"
#include "common/Variant.h"
#include "platform/win32/com/UniqueVariant.h"

namespace nv::com {

UniqueVariant VariantFromText(TextView text);
UniqueVariant VariantFromLong(std::int32_t number);
// The optional argument a caller leaves out, as automation passes it.
UniqueVariant LeftOutVariant();
// Empty, a 32-bit number or a text, as the system keeps values.
UniqueVariant VariantFromValue(const Variant& value);

// The value as the system keeps it: empty, a number that fits 32 bits, or else its text.
// Null and values without a text are a run-time error (94 and 13).
Variant ValueOfVariant(const VARIANT& value);
// The text of any value that has one; empty for Empty.
Text TextOfVariant(const VARIANT& value);
// A whole number; a value that is none is a type mismatch, a too large one an overflow.
std::int32_t LongOfVariant(const VARIANT& value);

}  // namespace nv::com
