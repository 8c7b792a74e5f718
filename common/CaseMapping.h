#pragma once
// Upper-casing that keeps the length: one UTF-16 unit maps to one, the same table on
// every platform (characters whose upper-case form is longer keep their own form).
#include "common/Text.h"

namespace nv {

char16_t UpperChar(char16_t c) noexcept;
void UpperCaseInPlace(Text& text) noexcept;
Text UpperCase(TextView text);

}  // namespace nv
