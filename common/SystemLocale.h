#pragma once
// What the platform says of the user's language; implemented once per platform.

namespace nv {

// True when the system writes truth values in French ("Vrai"/"Faux").
bool SystemUsesFrenchWords();

}  // namespace nv
