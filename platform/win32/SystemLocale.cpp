#include "common/SystemLocale.h"

#include <windows.h>

#include <iterator>

namespace nv {
namespace {

// A setting of the user's locale, or `otherwise` when it has none.
Text UserLocaleText(LCTYPE what, const char16_t* otherwise) {
  wchar_t buffer[16];
  const int length = ::GetLocaleInfoW(LOCALE_USER_DEFAULT, what, buffer, static_cast<int>(std::size(buffer)));
  if (length <= 1) return otherwise;  // the length counts the terminator
  return Text(buffer, buffer + length - 1);
}

}  // namespace

bool SystemUsesFrenchWords() { return PRIMARYLANGID(LANGIDFROMLCID(::GetUserDefaultLCID())) == LANG_FRENCH; }

Text SystemDateSeparator() { return UserLocaleText(LOCALE_SDATE, u"/"); }
Text SystemTimeSeparator() { return UserLocaleText(LOCALE_STIME, u":"); }

}  // namespace nv
