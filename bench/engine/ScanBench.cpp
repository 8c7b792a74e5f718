// The scan for one unit against the standard library's find, over a text without it.
#include <benchmark/benchmark.h>

#include "bench/engine/BenchTexts.h"
#include "engine/Scan.h"

namespace nv::bench {
namespace {

void ScanUnit(benchmark::State& state) {
  const Text& text = Lines(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(ScanFor(text.data(), text.size(), u'#'));
  state.SetBytesProcessed(state.iterations() * state.range(0) * kMiB);
}

void StandardFind(benchmark::State& state) {
  const TextView text = Lines(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(text.find(u'#'));
  state.SetBytesProcessed(state.iterations() * state.range(0) * kMiB);
}

BENCHMARK(ScanUnit)->Arg(16)->Unit(benchmark::kMillisecond);
BENCHMARK(StandardFind)->Arg(16)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nv::bench
