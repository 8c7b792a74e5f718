#include "engine/Scan.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

#if defined(__SSE2__)
#include <immintrin.h>
#elif defined(__i386__) || defined(__x86_64__)
#error "x86 builds scan with SSE2: build with -msse2"
#endif

namespace nv {
namespace detail {
namespace {

// The needle's units between its first and its last, compared at `at`.
inline bool MiddleMatches(const char16_t* at, TextView needle) noexcept {
  return needle.size() <= 2 || std::char_traits<char16_t>::compare(at + 1, needle.data() + 1, needle.size() - 2) == 0;
}

inline bool MatchesAt(const char16_t* at, TextView needle) noexcept {
  return at[0] == needle.front() && at[needle.size() - 1] == needle.back() && MiddleMatches(at, needle);
}

}  // namespace

// Four units per 64-bit word: a lane equal to `unit` becomes zero and the classic
// zero-lane test flags it. Only the lowest flag is exact, which is the one we need.
std::size_t ScanForPortable(const char16_t* first, std::size_t count, char16_t unit) noexcept {
  std::size_t i = 0;
  if constexpr (std::endian::native == std::endian::little) {
    constexpr std::uint64_t kOnes = 0x0001000100010001u;
    constexpr std::uint64_t kHighs = 0x8000800080008000u;
    const std::uint64_t pattern = kOnes * unit;
    for (; i + 4 <= count; i += 4) {
      std::uint64_t word;
      std::memcpy(&word, first + i, sizeof word);
      word ^= pattern;
      const std::uint64_t flags = (word - kOnes) & ~word & kHighs;
      if (flags != 0) return i + static_cast<std::size_t>(std::countr_zero(flags)) / 16;
    }
  }
  for (; i < count; ++i)
    if (first[i] == unit) return i;
  return count;
}

std::size_t FindFromPortable(TextView text, std::size_t from, TextView needle) noexcept {
  if (from >= text.size() || needle.size() > text.size() - from) return NotFound;
  const std::size_t lastStart = text.size() - needle.size();
  for (std::size_t at = from; at <= lastStart; ++at) {
    at += ScanForPortable(text.data() + at, lastStart - at + 1, needle.front());
    if (at > lastStart) break;
    if (MatchesAt(text.data() + at, needle)) return at;
  }
  return NotFound;
}

std::size_t FindEveryPortable(TextView text, std::size_t from, TextView needle, std::span<std::size_t> ends) noexcept {
  std::size_t count = 0;
  for (std::size_t at = from; count < ends.size() && (at = FindFromPortable(text, at, needle)) != NotFound;) {
    at += needle.size();
    ends[count++] = at;
  }
  return count;
}

#if defined(__SSE2__)
namespace {

inline __m128i Load(const char16_t* at) noexcept { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at)); }

inline std::size_t LaneOf(unsigned mask) noexcept { return static_cast<std::size_t>(std::countr_zero(mask)) / 2; }

// One bit per unit, for the 16 possible starts at `at`: the unit there is the needle's
// first one and the unit `reach` further is its last one. Testing both units at once
// keeps frequent first units (a space, a '<') from stopping the scan.
inline unsigned Candidates16(const char16_t* at, std::size_t reach, __m128i head, __m128i tail) noexcept {
  const __m128i low = _mm_and_si128(_mm_cmpeq_epi16(Load(at), head), _mm_cmpeq_epi16(Load(at + reach), tail));
  const __m128i high = _mm_and_si128(_mm_cmpeq_epi16(Load(at + 8), head), _mm_cmpeq_epi16(Load(at + 8 + reach), tail));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(low, high)));
}

}  // namespace

std::size_t ScanForSse2(const char16_t* first, std::size_t count, char16_t unit) noexcept {
  const __m128i pattern = _mm_set1_epi16(static_cast<short>(unit));
  const auto equal = [&](std::size_t at) {
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(Load(first + at), pattern)));
  };
  std::size_t i = 0;
  // Short scans (a line, a field) are the common case: test the first block alone.
  if (count >= 8) {
    if (const unsigned m = equal(0)) return LaneOf(m);
    i = 8;
  }
  for (; i + 32 <= count; i += 32) {
    const __m128i any = _mm_or_si128(
        _mm_or_si128(_mm_cmpeq_epi16(Load(first + i), pattern), _mm_cmpeq_epi16(Load(first + i + 8), pattern)),
        _mm_or_si128(_mm_cmpeq_epi16(Load(first + i + 16), pattern), _mm_cmpeq_epi16(Load(first + i + 24), pattern)));
    if (_mm_movemask_epi8(any) == 0) continue;
    for (std::size_t k = 0; k < 32; k += 8)
      if (const unsigned m = equal(i + k)) return i + k + LaneOf(m);
  }
  for (; i + 8 <= count; i += 8)
    if (const unsigned m = equal(i)) return i + LaneOf(m);
  for (; i < count; ++i)
    if (first[i] == unit) return i;
  return count;
}

std::size_t FindFromSse2(TextView text, std::size_t from, TextView needle) noexcept {
  if (from >= text.size() || needle.size() > text.size() - from) return NotFound;
  const std::size_t lastStart = text.size() - needle.size();
  const std::size_t reach = needle.size() - 1;
  const char16_t* const data = text.data();
  const __m128i head = _mm_set1_epi16(static_cast<short>(needle.front()));
  const __m128i tail = _mm_set1_epi16(static_cast<short>(needle.back()));
  std::size_t at = from;
  for (; at + 16 <= lastStart + 1; at += 16)
    for (unsigned bits = Candidates16(data + at, reach, head, tail); bits != 0; bits &= bits - 1) {
      const std::size_t start = at + static_cast<std::size_t>(std::countr_zero(bits));
      if (MiddleMatches(data + start, needle)) return start;
    }
  for (; at <= lastStart; ++at)
    if (MatchesAt(data + at, needle)) return at;
  return NotFound;
}

// One pass over the text, 32 starts at a time, instead of a search restarted after every
// occurrence: lines and fields are short.
std::size_t FindEverySse2(TextView text, std::size_t from, TextView needle, std::span<std::size_t> ends) noexcept {
  if (from >= text.size() || needle.size() > text.size() - from) return 0;
  const std::size_t lastStart = text.size() - needle.size();
  const std::size_t reach = needle.size() - 1;
  const char16_t* const data = text.data();
  const __m128i head = _mm_set1_epi16(static_cast<short>(needle.front()));
  const __m128i tail = _mm_set1_epi16(static_cast<short>(needle.back()));
  std::size_t count = 0;
  std::size_t next = from;  // occurrences do not overlap: none starts before this
  std::size_t block = from;
  for (; block + 32 <= lastStart + 1; block += 32) {
    std::uint32_t bits = Candidates16(data + block, reach, head, tail) |
                         static_cast<std::uint32_t>(Candidates16(data + block + 16, reach, head, tail)) << 16;
    for (; bits != 0; bits &= bits - 1) {
      const std::size_t at = block + static_cast<std::size_t>(std::countr_zero(bits));
      if (at < next || !MiddleMatches(data + at, needle)) continue;
      if (count == ends.size()) return count;
      next = at + needle.size();
      ends[count++] = next;
    }
  }
  for (std::size_t at = std::max(block, next); at <= lastStart;) {
    if (MatchesAt(data + at, needle)) {
      if (count == ends.size()) return count;
      at += needle.size();
      ends[count++] = at;
    } else {
      ++at;
    }
  }
  return count;
}

namespace {

__attribute__((target("avx2"))) inline __m256i Load32(const char16_t* at) noexcept {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
}

// The same 32 starts as two Candidates16, from two 256-bit compares of each kind. The pack
// works within each 128-bit half, so its quarters are put back in order.
__attribute__((target("avx2"))) inline std::uint32_t Candidates32(const char16_t* at, std::size_t reach,
                                                                 __m256i head, __m256i tail) noexcept {
  const __m256i low =
      _mm256_and_si256(_mm256_cmpeq_epi16(Load32(at), head), _mm256_cmpeq_epi16(Load32(at + reach), tail));
  const __m256i high =
      _mm256_and_si256(_mm256_cmpeq_epi16(Load32(at + 16), head), _mm256_cmpeq_epi16(Load32(at + 16 + reach), tail));
  const __m256i packed = _mm256_permute4x64_epi64(_mm256_packs_epi16(low, high), 0xD8);
  return static_cast<std::uint32_t>(_mm256_movemask_epi8(packed));
}

}  // namespace

// FindEverySse2 with the wider compares: a text already in the processor's cache (a piece of
// a variable just read) is scanned in about a third of the time.
__attribute__((target("avx2"))) std::size_t FindEveryAvx2(TextView text, std::size_t from, TextView needle,
                                                          std::span<std::size_t> ends) noexcept {
  if (from >= text.size() || needle.size() > text.size() - from) return 0;
  const std::size_t lastStart = text.size() - needle.size();
  const std::size_t reach = needle.size() - 1;
  const char16_t* const data = text.data();
  const __m256i head = _mm256_set1_epi16(static_cast<short>(needle.front()));
  const __m256i tail = _mm256_set1_epi16(static_cast<short>(needle.back()));
  std::size_t count = 0;
  std::size_t next = from;
  std::size_t block = from;
  for (; block + 32 <= lastStart + 1; block += 32) {
    for (std::uint32_t bits = Candidates32(data + block, reach, head, tail); bits != 0; bits &= bits - 1) {
      const std::size_t at = block + static_cast<std::size_t>(std::countr_zero(bits));
      if (at < next || !MiddleMatches(data + at, needle)) continue;
      if (count == ends.size()) return count;
      next = at + needle.size();
      ends[count++] = next;
    }
  }
  // The last starts, fewer than 32, one at a time as the SSE2 pass takes them.
  return count + FindEverySse2(text, std::max(block, next), needle, ends.subspan(count));
}

bool HasAvx2() noexcept {
  // Initialised here too: a caller may come before the runtime's own constructors have run
  // (a DLL's, say).
  static const bool has = [] {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
  }();
  return has;
}
#endif

}  // namespace detail

std::size_t ScanFor(const char16_t* first, std::size_t count, char16_t unit) noexcept {
#if defined(__SSE2__)
  return detail::ScanForSse2(first, count, unit);
#else
  return detail::ScanForPortable(first, count, unit);
#endif
}

std::size_t FindFrom(TextView text, std::size_t from, TextView needle) noexcept {
  if (from >= text.size()) return NotFound;
  if (needle.empty()) return from;
#if defined(__SSE2__)
  return detail::FindFromSse2(text, from, needle);
#else
  return detail::FindFromPortable(text, from, needle);
#endif
}

std::size_t FindEvery(TextView text, std::size_t from, TextView needle, std::span<std::size_t> ends) noexcept {
#if defined(__SSE2__)
  if (detail::HasAvx2()) return detail::FindEveryAvx2(text, from, needle, ends);
  return detail::FindEverySse2(text, from, needle, ends);
#else
  return detail::FindEveryPortable(text, from, needle, ends);
#endif
}

}  // namespace nv
