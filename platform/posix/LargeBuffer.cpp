#include "common/LargeBuffer.h"

#include <linux/mman.h>  // MADV_COLLAPSE, which the C library does not name yet
#include <sys/mman.h>

#include <cstdint>
#include <system_error>

namespace nv {
namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
// From this size on the C library maps a block of its own for an allocation, and the
// system places a mapping of whole huge pages on a huge-page boundary.
constexpr std::size_t kLargeBuffer = std::size_t{1} << 20;
// What the C library adds to an allocation it maps: its block header, rounded up.
constexpr std::size_t kAllocationOverhead = 32;
// From this size on a buffer's pages are made present by a thread of their own.
constexpr std::size_t kPopulatedBuffer = std::size_t{8} << 20;

}  // namespace

std::size_t LargeBufferCapacity(std::size_t units, std::size_t unitSize) noexcept {
  const std::size_t bytes = units * unitSize;
  if (bytes < kLargeBuffer) return units;
  const std::size_t mapped = (bytes + kAllocationOverhead + kHugePage - 1) / kHugePage * kHugePage;
  return (mapped - kAllocationOverhead) / unitSize;
}

LargeBufferPreparation::LargeBufferPreparation(void* data, std::size_t bytes) noexcept {
  const auto start = reinterpret_cast<std::uintptr_t>(data);
#if defined(MADV_HUGEPAGE)
  // A large buffer just past the header of a mapping of its own that lies on a huge-page
  // boundary (see LargeBufferCapacity): the huge pages at its ends, which hold that header
  // and its unused tail, are asked for too. Any other gets only the whole huge pages inside it.
  const std::uintptr_t below = start & ~(kHugePage - 1);
  const bool ownMapping = bytes >= kLargeBuffer && start - below <= kAllocationOverhead;
  const std::uintptr_t first = ownMapping ? below : (start + kHugePage - 1) & ~(kHugePage - 1);
  const std::uintptr_t last =
      ownMapping ? (start + bytes + kHugePage - 1) & ~(kHugePage - 1) : (start + bytes) & ~(kHugePage - 1);
  if (last > first) ::madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
#if defined(MADV_COLLAPSE)
  // The C library has already written the block's header into its first page, so that
  // huge page would be faulted in 4 KiB at a time: made one huge page now instead.
  if (ownMapping) ::madvise(reinterpret_cast<void*>(first), kHugePage, MADV_COLLAPSE);
#endif
#endif
#if defined(MADV_POPULATE_WRITE)
  if (bytes < kPopulatedBuffer) return;
  constexpr std::uintptr_t kPage = 4096;
  const std::uintptr_t from = (start + kPage - 1) & ~(kPage - 1);
  const std::uintptr_t to = (start + bytes) & ~(kPage - 1);
  try {
    populating_ = std::thread([from, to] { ::madvise(reinterpret_cast<void*>(from), to - from, MADV_POPULATE_WRITE); });
  } catch (const std::system_error&) {
    // No thread to spare: the pages come with their first writes, as they would anyway.
  }
#endif
}

LargeBufferPreparation::~LargeBufferPreparation() {
  if (populating_.joinable()) populating_.join();
}

}  // namespace nv
