// The store and execution on a real hive: one ReadRegistryValue, LoadTaskDefinition of a
// 100- and a 1,000-field task, 1,000 variables stored, ExecuteTache of a 10-field split, and
// a 1,000-field positional extraction over a 16 MiB variable beside the engine alone on the
// same input, and a 16 MiB variable written out as UTF-8 while it is read beside read whole
// then converted.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <string>

#include <unistd.h>

#include "common/Conversions.h"
#include "common/Utf.h"
#include "engine/ExtractPieces.h"
#include "engine/PieceCut.h"
#include "host/NativeHostServices.h"
#include "host/ScenarioVariables.h"
#include "host/StandInServices.h"
#include "platform/posix/SqliteHive.h"
#include "plugin/ExtractionChaine.h"
#include "plugin/HostModule.h"
#include "store/ModuleState.h"
#include "store/RegistryOperations.h"
#include "store/TaskStore.h"

namespace nv {
namespace {

class NoPrompt final : public ActionPrompt {
 public:
  std::optional<ActionValues> AskNewAction() override { return std::nullopt; }
  std::optional<ActionValues> AskChanges(std::int32_t) override { return std::nullopt; }
  void ShowHelp(const Text&) override {}
};

// A hive in the temporary folder with the stand-in host installed, removed afterwards.
class BenchHost {
 public:
  BenchHost()
      : path_(std::filesystem::temp_directory_path() / ("nvextch-bench-" + std::to_string(::getpid()) + ".db")),
        hive_(SqliteHive::Open(path_.string())),
        services_(*hive_, prompt_, [](const std::string&) {}) {
    Module().PlatformRegistry = hive_.get();
    HostModule().PlatformServices = &services_;
    SetRegistryContext(static_cast<std::int32_t>(RegRoot::LocalMachine), kTasks);
  }
  ~BenchHost() {
    Module() = ModuleState{};
    hive_.reset();
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(path_.string() + suffix);
  }
  Registry& Hive() { return *hive_; }

  static constexpr const char16_t* kTasks = u"SOFTWARE\\NOVRA\\Scenarios\\S\\Taches";

 private:
  std::filesystem::path path_;
  std::unique_ptr<SqliteHive> hive_;
  NoPrompt prompt_;
  NativeHostServices services_;
};

void SaveSubstringsTask(int fields, const Text& chaine) {
  TaskEditorValues values;
  values.Fonction = FunctionCode::Substrings;
  values.Chaine = chaine;
  values.Separateur = u"\n";
  for (int i = 0; i < fields; ++i) {
    values.Lignes.push_back({u"@V" + DecimalText(i), DecimalText(i * 16), DecimalText(i * 16 + 2), u"False"});
  }
  SaveTask(u"T", values);
}

void BM_ReadRegistryValue(benchmark::State& state) {
  BenchHost host;
  WriteRegistryValue(u"T", u"Chaine", ValueKind::Text, u"a;b;c");
  for (auto _ : state) benchmark::DoNotOptimize(ReadRegistryValue(u"T", u"Chaine"));
}
BENCHMARK(BM_ReadRegistryValue);

void BM_LoadTaskDefinition(benchmark::State& state) {
  BenchHost host;
  SaveSubstringsTask(static_cast<int>(state.range(0)), u"x");
  TaskDefinition definition;
  for (auto _ : state) {
    LoadTaskDefinition(u"T", definition);
    benchmark::DoNotOptimize(definition.Fields.data());
  }
}
BENCHMARK(BM_LoadTaskDefinition)->ArgName("fields")->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

// What an execution's variables cost alone: 1,000 short pieces stored, then committed.
void BM_StoreVariables1000(benchmark::State& state) {
  BenchHost host;
  std::vector<Text> names;
  for (int i = 0; i < 1000; ++i) names.push_back(u"V" + DecimalText(i));
  for (auto _ : state) {
    VariablesStandIn variables(host.Hive(), 0);
    for (const Text& name : names) variables.SetVariableValue(u"S", name, u"line 1234 of the text");
  }
}
BENCHMARK(BM_StoreVariables1000)->Unit(benchmark::kMicrosecond);

void BM_ExecuteSplit10Fields(benchmark::State& state) {
  BenchHost host;
  TaskEditorValues values;
  values.Fonction = FunctionCode::Split;
  values.Chaine = u"@Line";
  values.Separateur = u";";
  for (int i = 0; i < 10; ++i) values.Colonnes.push_back(u"@F" + DecimalText(i));
  SaveTask(u"T", values);
  ScenarioVariables(host.Hive()).Set(u"S", u"Line", u"a;bb;ccc;dddd;e;f;g;h;i;j");
  ExtractionChaine plugin;
  plugin.InitializeProperties(u"T", u"S", 0);
  for (auto _ : state) plugin.ExecuteTache();
  if (plugin.GetStatus() != 2) state.SkipWithError("the task failed");
}
BENCHMARK(BM_ExecuteSplit10Fields)->Unit(benchmark::kMicrosecond);

Text LinesOf16MiB() {
  Text text;
  const std::size_t units = 8u << 20;  // 16 MiB of UTF-16
  text.reserve(units);
  for (std::size_t line = 0; text.size() + 64 < units; ++line) {
    text += u"line " + DecimalText(static_cast<std::int64_t>(line)) + u" of the text, padded to about sixty-four units\n";
  }
  return text;
}

void BM_ExecuteSubstrings1000FieldsOver16MiB(benchmark::State& state) {
  BenchHost host;
  const Text text = LinesOf16MiB();
  ScenarioVariables(host.Hive()).Set(u"S", u"Big", text);
  SaveSubstringsTask(1000, u"@Big");
  ExtractionChaine plugin;
  plugin.InitializeProperties(u"T", u"S", 0);
  for (auto _ : state) plugin.ExecuteTache();
  if (plugin.GetStatus() != 2) state.SkipWithError("the task failed");
}
BENCHMARK(BM_ExecuteSubstrings1000FieldsOver16MiB)->Unit(benchmark::kMillisecond);

void BM_EngineSubstrings1000FieldsOver16MiB(benchmark::State& state) {
  const Text text = LinesOf16MiB();
  for (auto _ : state) {
    const PieceCut cut(text, u"\n", kPositionalReach);
    for (int i = 0; i < 1000; ++i) {
      std::int16_t start = static_cast<std::int16_t>(i * 16);
      std::int16_t end = static_cast<std::int16_t>(i * 16 + 2);
      benchmark::DoNotOptimize(ExtractPieces(cut, start, end, false));
    }
  }
}
BENCHMARK(BM_EngineSubstrings1000FieldsOver16MiB)->Unit(benchmark::kMillisecond);

// What `nvhost var get` does with a long log: its UTF-8 (8 MiB) made piece by piece as the
// hive gives the 16 MiB of UTF-16, beside the value read whole and converted after.
class DiscardedUtf8 final : public Utf8Output {
 public:
  void Write(std::string_view bytes) override { benchmark::DoNotOptimize(bytes.data()); }
};

void BM_VariableOutAsUtf8While16MiBAreRead(benchmark::State& state) {
  BenchHost host;
  ScenarioVariables variables(host.Hive());
  variables.Set(u"S", u"Big", LinesOf16MiB());
  DiscardedUtf8 out;
  for (auto _ : state) variables.WriteAsUtf8(u"S", u"Big", out);
}
BENCHMARK(BM_VariableOutAsUtf8While16MiBAreRead)->Unit(benchmark::kMillisecond);

void BM_VariableOutAsUtf8After16MiBAreRead(benchmark::State& state) {
  BenchHost host;
  ScenarioVariables variables(host.Hive());
  variables.Set(u"S", u"Big", LinesOf16MiB());
  for (auto _ : state) benchmark::DoNotOptimize(ToUtf8(ToText(*variables.Get(u"S", u"Big"))));
}
BENCHMARK(BM_VariableOutAsUtf8After16MiBAreRead)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nv
