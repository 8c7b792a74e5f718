#include "bench/engine/BenchTexts.h"

#include <climits>
#include <cstdlib>
#include <map>
#include <random>
#include <string>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace nv::bench {
namespace {

// Memory freed between runs stays with the process, so that a run measures the engine
// rather than the first touch of pages the system hands out (very costly in a virtual
// machine). NV_BENCH_FRESH_MEMORY=1 keeps the allocator's defaults.
[[maybe_unused]] const bool kKeepFreedMemory = [] {
#if defined(__GLIBC__)
  if (std::getenv("NV_BENCH_FRESH_MEMORY") == nullptr) {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, INT_MAX);
    return true;
  }
#endif
  return false;
}();

std::size_t Units(std::int64_t mebibytes) { return static_cast<std::size_t>(mebibytes * kMiB) / sizeof(char16_t); }

// Each text is built once per size and kept for the whole run.
template <typename Build>
const Text& Cached(std::map<std::int64_t, Text>& cache, std::int64_t mebibytes, Build build) {
  auto [it, inserted] = cache.try_emplace(mebibytes);
  if (inserted) it->second = build(Units(mebibytes));
  return it->second;
}

}  // namespace

const Text& Lines(std::int64_t mebibytes) {
  static std::map<std::int64_t, Text> cache;
  return Cached(cache, mebibytes, [](std::size_t units) {
    std::mt19937 random(7);
    Text text;
    text.reserve(units + 82);
    while (text.size() < units) {
      const auto length = std::uniform_int_distribution<std::size_t>(48, 80)(random);
      for (std::size_t i = 0; i < length; ++i) text += static_cast<char16_t>(u'a' + (text.size() * 7 + i) % 26);
      text += u"\r\n";
    }
    text.resize(units);
    return text;
  });
}

const Text& Marked(std::int64_t mebibytes) {
  static std::map<std::int64_t, Text> cache;
  return Cached(cache, mebibytes, [](std::size_t units) {
    const TextView filler = u"<a>b=c;d e<f>g:h ";
    Text text;
    text.reserve(units + filler.size());
    for (int marker = 1; marker <= 10; ++marker) {
      const std::string digits = std::to_string(marker);
      while (text.size() + filler.size() + digits.size() + 2 <= units * static_cast<std::size_t>(marker) / 10)
        text += filler;
      text += u'<';
      for (const char d : digits) text += static_cast<char16_t>(d);
      text += u'>';
    }
    return text;
  });
}

}  // namespace nv::bench
