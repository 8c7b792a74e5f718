#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "bench/engine/BenchTexts.h"
#include "engine/Split.h"
#include "tests/engine/reference/Reference.h"

namespace nv::bench {
namespace {

// The text is an in/out argument: each run gets a fresh copy, and the previous pieces are
// freed, outside the measured time.
template <typename Pieces, auto Split>
void RunSplit(benchmark::State& state) {
  const Text& lines = Lines(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    Text text = lines;
    auto pieces = std::make_unique<Pieces>();
    state.ResumeTiming();
    Split(text, u"\r\n", *pieces);
    benchmark::DoNotOptimize(pieces.get());
    state.PauseTiming();
    pieces.reset();
    state.ResumeTiming();
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * kMiB);
}

// The engine's split: views into the text it takes over.
void Split(benchmark::State& state) { RunSplit<SplitPieces, &SplitBySeparator>(state); }
void SplitReference(benchmark::State& state) {
  RunSplit<std::vector<Text>, &reference::SplitBySeparator>(state);
}

void SplitViews(benchmark::State& state) {
  const Text& lines = Lines(state.range(0));
  for (auto _ : state) {
    std::vector<TextView> pieces = nv::SplitViews(lines, u"\r\n");
    benchmark::DoNotOptimize(pieces.data());
    state.PauseTiming();
    pieces = {};
    state.ResumeTiming();
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * kMiB);
}

// The owned copies alone, from pieces already found: the part of Split that is one heap
// allocation and one copy per piece.
void OwnedCopies(benchmark::State& state) {
  const std::vector<TextView> views = nv::SplitViews(Lines(state.range(0)), u"\r\n");
  for (auto _ : state) {
    std::vector<Text> pieces;
    pieces.reserve(views.size());
    for (const TextView view : views) pieces.emplace_back(view);
    benchmark::DoNotOptimize(pieces.data());
    state.PauseTiming();
    pieces = {};
    state.ResumeTiming();
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * kMiB);
}

BENCHMARK(Split)
    ->RangeMultiplier(4)
    ->Range(1, 256)
    ->Unit(benchmark::kMillisecond)
    ->MinWarmUpTime(0.1)
    ->ComputeStatistics("min", Fastest);
BENCHMARK(SplitViews)
    ->Arg(1)
    ->Arg(16)
    ->Arg(64)
    ->Arg(256)
    ->Unit(benchmark::kMillisecond)
    ->MinWarmUpTime(0.1)
    ->ComputeStatistics("min", Fastest);
BENCHMARK(OwnedCopies)
    ->Arg(16)
    ->Arg(64)
    ->Unit(benchmark::kMillisecond)
    ->MinWarmUpTime(0.1)
    ->ComputeStatistics("min", Fastest);
BENCHMARK(SplitReference)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace nv::bench
