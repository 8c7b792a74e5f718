#pragma once
#include "common/Text.h"
// What the platform says of the user's language; implemented once per platform.

namespace nv {

// True when the system writes truth values in French ("Vrai"/"Faux").
bool SystemUsesFrenchWords();

// The system's date and time separators, as timestamps are written with them.
Text SystemDateSeparator();
Text SystemTimeSeparator();

}  // namespace nv
