#include "common/SystemLocale.h"

#include <cstdlib>
#include <string_view>

namespace nv {

// The locale environment in the order the C library consults it for messages.
bool SystemUsesFrenchWords() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') return std::string_view(value).starts_with("fr");
  }
  return false;
}

// The C library has no per-locale date separators worth trusting: both of our languages
// write dates with "/" and times with ":".
Text SystemDateSeparator() { return u"/"; }
Text SystemTimeSeparator() { return u":"; }

}  // namespace nv
