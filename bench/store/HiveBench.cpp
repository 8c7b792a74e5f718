// The hive's cost per call, as the store pays it: a task value read through a fresh handle;
// and what a large task's load and an execution's stores cost in the hive alone.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>

#include "platform/posix/SqliteHive.h"
#include "store/RegistryKey.h"
#include "store/TaskStore.h"
#include "store/ValueBytes.h"

namespace nv {
namespace {

constexpr TextView kTaskKey = u"SOFTWARE\\NOVRA\\Scenarios\\Demo\\Taches\\Extraction";

class HiveFile {
 public:
  HiveFile()
      : path_(std::filesystem::temp_directory_path() /
              ("nvextch-bench-" + std::to_string(std::random_device{}()) + ".db")) {}
  ~HiveFile() {
    std::error_code ignored;
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(path_.string() + suffix, ignored);
  }
  std::string Path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

void Fill(Registry& hive, int values) {
  UniqueRegKey key;
  CreateUniqueKey(hive, RegRoot::LocalMachine, kTaskKey, RegAccess::AllAccess, key);
  hive.BeginBatch();
  for (int i = 0; i < values; ++i) {
    const auto data = BytesFromText(u"value number " + DecimalText(i));
    hive.SetValue(key.Get(), FieldValueName(i, u").Var"), RegType::Sz, data.data(),
                  static_cast<std::uint32_t>(data.size()));
  }
  const auto data = BytesFromText(u"alpha;beta;gamma");
  hive.SetValue(key.Get(), u"Chaine", RegType::Sz, data.data(), static_cast<std::uint32_t>(data.size()));
  hive.CommitBatch();
}

// Open a 6-level path, read one REG_SZ into a 65,536-byte buffer, close. Each call is a read
// transaction of its own, and that (two lock system calls) is most of the cost; inside a
// batch the calls share one.
void BM_OpenQueryClose(benchmark::State& state) {
  HiveFile file;
  const auto hive = SqliteHive::Open(file.Path());
  Fill(*hive, 100);
  std::vector<std::uint8_t> buffer(65536);
  const bool batch = state.range(0) != 0;
  if (batch) hive->BeginBatch();
  for (auto _ : state) {
    RegKey key = 0;
    hive->OpenKey(RegRoot::LocalMachine, kTaskKey, RegAccess::Read, key);
    std::uint32_t type = 0;
    auto size = static_cast<std::uint32_t>(buffer.size());
    hive->QueryValue(key, u"Chaine", &type, buffer.data(), &size);
    hive->CloseKey(key);
    benchmark::DoNotOptimize(size);
  }
  if (batch) hive->CommitBatch();
}
BENCHMARK(BM_OpenQueryClose)->ArgName("inBatch")->Arg(0)->Arg(1);

// A read through a handle kept open.
void BM_Query(benchmark::State& state) {
  HiveFile file;
  const auto hive = SqliteHive::Open(file.Path());
  Fill(*hive, 100);
  UniqueRegKey key;
  OpenUniqueKey(*hive, RegRoot::LocalMachine, kTaskKey, RegAccess::Read, key);
  std::vector<std::uint8_t> buffer(65536);
  for (auto _ : state) {
    std::uint32_t type = 0;
    auto size = static_cast<std::uint32_t>(buffer.size());
    hive->QueryValue(key.Get(), u"Chaine", &type, buffer.data(), &size);
    benchmark::DoNotOptimize(size);
  }
}
BENCHMARK(BM_Query);

// One value written outside any batch: its own transaction.
void BM_SetValue(benchmark::State& state) {
  HiveFile file;
  const auto hive = SqliteHive::Open(file.Path());
  UniqueRegKey key;
  CreateUniqueKey(*hive, RegRoot::LocalMachine, kTaskKey, RegAccess::AllAccess, key);
  const auto data = BytesFromText(u"12/05/24 10:11:12");
  for (auto _ : state)
    hive->SetValue(key.Get(), u"ExecuteLe", RegType::Sz, data.data(), static_cast<std::uint32_t>(data.size()));
}
BENCHMARK(BM_SetValue);

// The hive's own part of a task's load: every value of a key given once, names and data,
// to a visitor that keeps nothing (a 1,000-field positional task has 4,004 values).
void BM_VisitValues(benchmark::State& state) {
  HiveFile file;
  const auto hive = SqliteHive::Open(file.Path());
  Fill(*hive, static_cast<int>(state.range(0)));
  UniqueRegKey key;
  OpenUniqueKey(*hive, RegRoot::LocalMachine, kTaskKey, RegAccess::Read, key);
  const ReadingScope reading(*hive);
  std::uint32_t units = 0;
  for (auto _ : state) {
    hive->VisitValues(key.Get(), 65536, [&](const VisitedValue& value) { units += value.size; });
    benchmark::DoNotOptimize(units);
  }
}
BENCHMARK(BM_VisitValues)->ArgName("values")->Arg(4004)->Unit(benchmark::kMicrosecond);

// The hive's own part of an execution's stores: as many values of one key rewritten in one
// batch, each as an existing variable is.
void BM_RewriteValuesInBatch(benchmark::State& state) {
  HiveFile file;
  const auto hive = SqliteHive::Open(file.Path());
  const int values = static_cast<int>(state.range(0));
  Fill(*hive, values);
  UniqueRegKey key;
  OpenUniqueKey(*hive, RegRoot::LocalMachine, kTaskKey, RegAccess::AllAccess, key);
  std::vector<Text> names;
  for (int i = 0; i < values; ++i) names.push_back(FieldValueName(i, u").Var"));
  const auto data = BytesFromText(u"line 1234 of the text");
  for (auto _ : state) {
    hive->BeginBatch();
    for (const Text& name : names)
      hive->SetValue(key.Get(), name, RegType::Sz, data.data(), static_cast<std::uint32_t>(data.size()));
    hive->CommitBatch();
  }
}
BENCHMARK(BM_RewriteValuesInBatch)->ArgName("values")->Arg(1000)->Unit(benchmark::kMicrosecond);

// Opening a hive file, its check included, by the number of values it holds.
void BM_OpenHive(benchmark::State& state) {
  HiveFile file;
  Fill(*SqliteHive::Open(file.Path()), static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(SqliteHive::Open(file.Path()));
}
BENCHMARK(BM_OpenHive)->Arg(100)->Arg(100000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace nv
