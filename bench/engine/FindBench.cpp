#include <benchmark/benchmark.h>

#include <vector>

#include "bench/engine/BenchTexts.h"
#include "engine/FindValues.h"
#include "tests/engine/reference/Reference.h"

namespace nv::bench {
namespace {

// Ten placeholders around the nine inner markers; the tenth marker ends the ninth value.
constexpr TextView kMask = u"*<1>*<2>*<3>*<4>*<5>*<6>*<7>*<8>*<9>*<10>";

// Arguments: size in MiB, case-sensitive (1) or not (0). The engine gives views, the
// reference owned texts.
template <auto Find, typename Value>
void RunFind(benchmark::State& state) {
  const Text& marked = Marked(state.range(0));
  const bool caseSensitive = state.range(1) != 0;
  std::size_t count = 0;
  for (auto _ : state) {
    state.PauseTiming();
    Text text = marked, mask(kMask);
    std::vector<Value> values;
    state.ResumeTiming();
    std::int16_t start = 0, end = 0;
    Find(text, mask, Text(u"*"), start, end, caseSensitive, false, values);
    count = values.size();
    benchmark::DoNotOptimize(values.data());
    state.PauseTiming();
    values = {};
    state.ResumeTiming();
  }
  if (count != 10) state.SkipWithError("the mask did not match");
  state.SetBytesProcessed(state.iterations() * state.range(0) * kMiB);
}

void EngineFind(Text& text, Text& mask, const Text& filter, std::int16_t& start, std::int16_t& end, bool cs, bool trim,
                std::vector<TextView>& values) {
  FindValues(text, mask, filter, start, end, cs, trim, values);
}
void FindValues10(benchmark::State& state) { RunFind<&EngineFind, TextView>(state); }
void FindValues10Reference(benchmark::State& state) { RunFind<&reference::FindValues, Text>(state); }

BENCHMARK(FindValues10)
    ->Args({1, 1})
    ->Args({16, 1})
    ->Args({16, 0})
    ->Unit(benchmark::kMillisecond)
    ->MinWarmUpTime(0.1)
    ->ComputeStatistics("min", Fastest);
BENCHMARK(FindValues10Reference)->Args({1, 1})->Args({1, 0})->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace nv::bench
