#pragma once
// Memory for a value of many MiB (a variable read from the registry).
#include <cstddef>

namespace nv {

// Asks the system to back the pages of a large buffer not yet written with huge pages,
// where it offers them on request: filling 32 MiB then costs a few page faults instead
// of one per 4 KiB, which is most of the cost of reading a large variable.
void AdviseLargeBuffer(void* data, std::size_t bytes) noexcept;

}  // namespace nv
