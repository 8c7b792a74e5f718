#include "common/LargeBuffer.h"

namespace nv {

// Large pages on Windows need a privilege that a host's process does not hold.
void AdviseLargeBuffer(void*, std::size_t) noexcept {}

}  // namespace nv
