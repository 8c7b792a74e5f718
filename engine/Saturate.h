#pragma once
// Resolved positions are written back into the callers' 16-bit variables. A text can hold
// more pieces or units than 16 bits count: the write-back then keeps the nearest value
// instead of failing, since the result itself is computed on the full value.
#include <algorithm>
#include <cstdint>
#include <limits>

namespace nv {

constexpr std::int16_t SaturateToInt16(std::int64_t value) noexcept {
  return static_cast<std::int16_t>(std::clamp<std::int64_t>(value, std::numeric_limits<std::int16_t>::min(),
                                                            std::numeric_limits<std::int16_t>::max()));
}

}  // namespace nv
