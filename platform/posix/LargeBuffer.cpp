#include "common/LargeBuffer.h"

#include <sys/mman.h>

#include <cstdint>

namespace nv {

void AdviseLargeBuffer(void* data, std::size_t bytes) noexcept {
#if defined(MADV_HUGEPAGE)
  // Only whole huge pages inside the buffer; the advice is a hint, its failure harmless.
  constexpr std::uintptr_t kHugePage = std::uintptr_t{2} << 20;
  const auto start = reinterpret_cast<std::uintptr_t>(data);
  const std::uintptr_t first = (start + kHugePage - 1) & ~(kHugePage - 1);
  const std::uintptr_t last = (start + bytes) & ~(kHugePage - 1);
  if (last > first) ::madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
#else
  (void)data;
  (void)bytes;
#endif
}

}  // namespace nv
