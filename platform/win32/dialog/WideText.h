#pragma once
// The system's text and Windows' wide strings are the same UTF-16 code units.
#include <string>

#include "common/Text.h"

namespace nv::win {

static_assert(sizeof(wchar_t) == sizeof(char16_t), "Windows' wide characters are UTF-16 code units");

inline std::wstring Wide(TextView text) { return std::wstring(text.begin(), text.end()); }
inline Text FromWide(std::wstring_view text) { return Text(text.begin(), text.end()); }

}  // namespace nv::win
