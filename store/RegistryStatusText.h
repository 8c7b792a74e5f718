#pragma once
// A registry error code in words, for messages that a person reads.
#include <string>

#include "store/Registry.h"

namespace nv {

// "error 5: access denied (...)" and the like; the number always comes first.
std::string RegistryStatusText(RegStatus status);

}  // namespace nv
