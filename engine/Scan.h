#pragma once
// Searching inside text: vectorised scans, and the search of a needle under the engine's
// rules (the empty needle is found at the start of any non-empty remaining text, and
// nowhere in an empty one).
#include <array>
#include <cstddef>
#include <span>

#include "common/Text.h"

namespace nv {

inline constexpr std::size_t NotFound = TextView::npos;

// Offset of the first `unit` among the `count` units at `first`, or `count` when absent.
std::size_t ScanFor(const char16_t* first, std::size_t count, char16_t unit) noexcept;

// Offset in `text` of the first occurrence of `needle` at or after `from`, or NotFound.
// `from` may be past the end (nothing is found there).
std::size_t FindFrom(TextView text, std::size_t from, TextView needle) noexcept;

// The ends (offsets just past them) of the occurrences of `needle` (not empty) in `text`
// that start at or after `from`, left to right without overlap, written into `ends` as far
// as it goes; returns how many were written. A full `ends` means there may be more: go on
// from the last end written. The caller's buffer lets a text of any size be cut with no
// allocation.
std::size_t FindEvery(TextView text, std::size_t from, TextView needle, std::span<std::size_t> ends) noexcept;

// Calls `take(end)` with the end of every occurrence of `needle` (not empty) in `text`, in
// order, without overlap.
template <typename Take>
void ForEachOccurrenceEnd(TextView text, TextView needle, Take take) {
  std::array<std::size_t, 256> ends;
  for (std::size_t from = 0;;) {
    const std::size_t count = FindEvery(text, from, needle, ends);
    for (std::size_t i = 0; i < count; ++i) take(ends[i]);
    if (count < ends.size()) return;
    from = ends.back();
  }
}

namespace detail {
// The variants behind the functions above, exposed so that each one is tested on any
// machine. The FindFrom variants take a non-empty needle.
std::size_t ScanForPortable(const char16_t* first, std::size_t count, char16_t unit) noexcept;
std::size_t FindFromPortable(TextView text, std::size_t from, TextView needle) noexcept;
std::size_t FindEveryPortable(TextView text, std::size_t from, TextView needle, std::span<std::size_t> ends) noexcept;
#if defined(__SSE2__)
std::size_t ScanForSse2(const char16_t* first, std::size_t count, char16_t unit) noexcept;
std::size_t FindFromSse2(TextView text, std::size_t from, TextView needle) noexcept;
std::size_t FindEverySse2(TextView text, std::size_t from, TextView needle, std::span<std::size_t> ends) noexcept;
// Only where HasAvx2().
std::size_t FindEveryAvx2(TextView text, std::size_t from, TextView needle, std::span<std::size_t> ends) noexcept;
bool HasAvx2() noexcept;
#endif
}  // namespace detail

}  // namespace nv
