#pragma once
// Registry timestamps: local time as "dd/mm/yy hh:mm:ss" with the system's separators.
#include <ctime>

#include "common/Text.h"

namespace nv {

Text FormatTimestamp(const std::tm& localTime);
Text CurrentTimestamp();

}  // namespace nv
