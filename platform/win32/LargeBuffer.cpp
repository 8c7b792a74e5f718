#include "common/LargeBuffer.h"

namespace nv {

// Large pages on Windows need a privilege that a host's process does not hold.
std::size_t LargeBufferCapacity(std::size_t units, std::size_t) noexcept { return units; }

LargeBufferPreparation::LargeBufferPreparation(void*, std::size_t) noexcept {}
LargeBufferPreparation::~LargeBufferPreparation() = default;

}  // namespace nv
