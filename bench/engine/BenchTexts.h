#pragma once
// Inputs of the engine benchmarks. Sizes are storage sizes: a text of 1 MiB holds 512 Ki
// UTF-16 units.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "common/Text.h"

namespace nv::bench {

constexpr std::int64_t kMiB = 1 << 20;

// With --benchmark_repetitions, the fastest repetition: on a shared machine the other
// aggregates measure the neighbours as much as the engine.
inline double Fastest(const std::vector<double>& times) { return *std::min_element(times.begin(), times.end()); }

// Lines of 48 to 80 units (64 on average) joined by carriage return + line feed.
const Text& Lines(std::int64_t mebibytes);
// Ten markers "<1>" .. "<10>" spread evenly over filler rich in '<' (the first unit of every
// marker), the last one ending the text: the mask "*<1>*<2>* ... *<9>*<10>" matches it.
const Text& Marked(std::int64_t mebibytes);

}  // namespace nv::bench
