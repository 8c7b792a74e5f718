#include <benchmark/benchmark.h>

#include <vector>

#include "bench/engine/BenchTexts.h"
#include "engine/ExtractPieces.h"
#include "tests/engine/reference/Reference.h"

namespace nv::bench {
namespace {

constexpr int kFields = 1000;
constexpr TextView kSeparator = u"\r\n";

struct Field {
  std::int16_t start, end;
  bool show;
};

// Fields spread over the whole text: single lines, pairs, and ranges counted from the end.
// Positions stay within 16 bits, as the task's fields are.
std::vector<Field> Fields(std::size_t lastIndex) {
  const auto lines = static_cast<std::int64_t>(std::min<std::size_t>(lastIndex, 32000));
  std::vector<Field> fields;
  for (int i = 0; i < kFields; ++i) {
    const auto start = static_cast<std::int16_t>(lines * i / kFields);
    switch (i % 4) {
      case 0:
        fields.push_back({start, static_cast<std::int16_t>(start + 1), false});
        break;
      case 1:
        fields.push_back({start, static_cast<std::int16_t>(start + 2), true});
        break;
      case 2:
        fields.push_back({static_cast<std::int16_t>(-1 - i % 50), static_cast<std::int16_t>(-(i % 40)), false});
        break;
      default:
        fields.push_back({static_cast<std::int16_t>(-3), 0, true});
        break;
    }
  }
  return fields;
}

// One execution: one cut of the text, then every field.
void ExtractFields(benchmark::State& state) {
  const Text& text = Lines(state.range(0));
  const std::vector<Field> fields = Fields(PieceCut(text, kSeparator).LastIndex());
  std::size_t output = 0;
  for (auto _ : state) {
    const PieceCut cut(text, kSeparator);
    output = 0;
    for (const Field& f : fields) {
      std::int16_t start = f.start, end = f.end;
      output += ExtractPieces(cut, start, end, f.show).size();
    }
    benchmark::DoNotOptimize(output);
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * kMiB);
  state.counters["output_units"] = static_cast<double>(output);
}

// Every field cutting the text again: the cost the reusable cut avoids.
template <auto Extract>
void ExtractFieldsEachCut(benchmark::State& state) {
  const Text& text = Lines(state.range(0));
  const Text separator(kSeparator);
  const std::vector<Field> fields = Fields(PieceCut(text, kSeparator).LastIndex());
  for (auto _ : state) {
    std::size_t output = 0;
    for (const Field& f : fields) {
      std::int16_t start = f.start, end = f.end;
      output += Extract(text, separator, start, end, f.show).size();
    }
    benchmark::DoNotOptimize(output);
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * kMiB);
}

TextView EngineOneShot(const Text& text, const Text& separator, std::int16_t& start, std::int16_t& end, bool show) {
  return ExtractPieces(TextView(text), TextView(separator), start, end, show);
}
void ExtractFieldsOneShot(benchmark::State& state) { ExtractFieldsEachCut<&EngineOneShot>(state); }
void ExtractFieldsReference(benchmark::State& state) { ExtractFieldsEachCut<&reference::ExtractPieces>(state); }

BENCHMARK(ExtractFields)
    ->Arg(1)
    ->Arg(16)
    ->Unit(benchmark::kMillisecond)
    ->MinWarmUpTime(0.1)
    ->ComputeStatistics("min", Fastest);
BENCHMARK(ExtractFieldsOneShot)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(ExtractFieldsReference)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace nv::bench
