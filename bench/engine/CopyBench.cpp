// The yardstick: one memcpy of the input, into memory already touched.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "bench/engine/BenchTexts.h"

namespace nv::bench {
namespace {

void Memcpy(benchmark::State& state) {
  const Text& text = Lines(state.range(0));
  std::vector<char16_t> target(text.size(), u'\0');
  for (auto _ : state) {
    std::memcpy(target.data(), text.data(), text.size() * sizeof(char16_t));
    benchmark::DoNotOptimize(target.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * kMiB);
}
// The same copy into memory the process has just obtained, as any new output is: the
// first write to each page costs a page fault.
void CopyToNewText(benchmark::State& state) {
  const Text& text = Lines(state.range(0));
  for (auto _ : state) {
    Text copy(text);
    benchmark::DoNotOptimize(copy.data());
    state.PauseTiming();
    copy = Text();
    state.ResumeTiming();
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * kMiB);
}

BENCHMARK(Memcpy)
    ->Arg(1)
    ->Arg(16)
    ->Arg(64)
    ->Arg(256)
    ->Unit(benchmark::kMillisecond)
    ->MinWarmUpTime(0.1)
    ->ComputeStatistics("min", Fastest);
BENCHMARK(CopyToNewText)
    ->Arg(1)
    ->Arg(16)
    ->Arg(64)
    ->Arg(256)
    ->Unit(benchmark::kMillisecond)
    ->MinWarmUpTime(0.1)
    ->ComputeStatistics("min", Fastest);

}  // namespace
}  // namespace nv::bench
