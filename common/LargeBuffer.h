#pragma once
// Memory for a value of many MiB (a variable read from the registry).
#include <cstddef>

namespace nv {

// How many units of `unitSize` bytes to allocate for a buffer of at least `units`: where the
// system backs large buffers with huge pages, one that fills whole huge pages, so that none
// of it falls back to small pages at its ends. Elsewhere `units` itself.
std::size_t LargeBufferCapacity(std::size_t units, std::size_t unitSize) noexcept;

// Asks the system to back the pages of a large buffer not yet written with huge pages,
// where it offers them on request: filling 32 MiB then costs a few page faults instead
// of one per 4 KiB, which is most of the cost of reading a large variable.
void AdviseLargeBuffer(void* data, std::size_t bytes) noexcept;

}  // namespace nv
