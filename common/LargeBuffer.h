#pragma once
// Memory for a value of many MiB (a variable read from the registry).
#include <cstddef>
#include <thread>

namespace nv {

// How many units of `unitSize` bytes to allocate for a buffer of at least `units`: where the
// system backs large buffers with huge pages, one that fills whole huge pages, so that none
// of it falls back to small pages at its ends. Elsewhere `units` itself.
std::size_t LargeBufferCapacity(std::size_t units, std::size_t unitSize) noexcept;

// Readies the pages of a buffer about to be filled (allocated at LargeBufferCapacity), for as
// long as it lives: huge pages where the system offers them on request and, for a buffer of
// many MiB, another thread that makes its pages present while this one fills them. The
// system's zeroing of fresh pages, the largest cost of reading a large variable, then runs
// beside the copying instead of before each page's first write. Destroyed before the buffer
// is (it waits for that thread); all of it is a hint, and its failure harmless.
class LargeBufferPreparation {
 public:
  LargeBufferPreparation(void* data, std::size_t bytes) noexcept;
  ~LargeBufferPreparation();
  LargeBufferPreparation(const LargeBufferPreparation&) = delete;
  LargeBufferPreparation& operator=(const LargeBufferPreparation&) = delete;

 private:
  std::thread populating_;
};

}  // namespace nv
