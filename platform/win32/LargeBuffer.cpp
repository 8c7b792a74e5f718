#include "common/LargeBuffer.h"

namespace nv {

// Large pages on Windows need a privilege that a host's process does not hold.
std::size_t LargeBufferCapacity(std::size_t units, std::size_t) noexcept { return units; }
void AdviseLargeBuffer(void*, std::size_t) noexcept {}

}  // namespace nv
