#pragma once
// The task types that the host's stand-ins know, by the host's own codes.
#include <cstdint>

namespace nv {

constexpr std::int16_t kStringExtractionTaskType = 39;

}  // namespace nv
