// Several processes on one hive: concurrent writers lose nothing, and a process killed in
// the middle of an import leaves the hive as before or after it.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <thread>

#include "host/regfile/RegFile.h"
#include "platform/posix/SqliteHive.h"
#include "store/ValueBytes.h"
#include "tests/posix/HiveSupport.h"
#include "tests/support/TestRegistry.h"

namespace nv::test {
namespace {

// Runs `body` in a child process; ExitStatus gives 0 when it returned true.
template <typename Body>
pid_t Spawn(Body body) {
  const pid_t pid = ::fork();
  if (pid != 0) return pid;
  bool done = false;
  try {
    done = body();
  } catch (...) {
  }
  ::_exit(done ? 0 : 1);
}

int ExitStatus(pid_t pid) {
  int status = 0;
  ::waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

TEST(HiveProcesses, ManyMakeTheSameNewHiveAtOnce) {
  for (int round = 0; round < 10; ++round) {
    TempFolder folder;
    const std::string file = folder.File("new/hive.db");
    std::vector<pid_t> children;
    for (int p = 0; p < 6; ++p) {
      children.push_back(Spawn([&file, p] {
        PutText(*SqliteHive::Open(file), u"K", u"p" + DecimalText(p), u"x");
        return !::testing::Test::HasFailure();
      }));
    }
    for (const pid_t pid : children) EXPECT_EQ(ExitStatus(pid), 0);
    EXPECT_EQ(ValueNames(*SqliteHive::Open(file), u"K").size(), 6u);
  }
}

TEST(HiveProcesses, TwoWritersAtOnceLoseNothing) {
  TempFolder folder;
  const std::string file = folder.File("hive.db");
  SqliteHive::Open(file);
  pid_t writers[2];
  for (int w = 0; w < 2; ++w) {
    writers[w] = Spawn([&file, w] {
      const auto hive = SqliteHive::Open(file);
      for (int i = 0; i < 1000; ++i) {
        RegKey key = 0;  // a fresh key each time: creation races too
        const auto data = BytesFromText(DecimalText(i));
        if (hive->CreateKey(RegRoot::LocalMachine, u"Shared\\Sub", RegAccess::AllAccess, key) != 0 ||
            hive->SetValue(key, u"w" + DecimalText(w) + u"-" + DecimalText(i), RegType::Sz, data.data(),
                           static_cast<std::uint32_t>(data.size())) != 0 ||
            hive->CloseKey(key) != 0)
          return false;
      }
      return true;
    });
  }
  for (const pid_t pid : writers) EXPECT_EQ(ExitStatus(pid), 0);
  const auto hive = SqliteHive::Open(file);
  EXPECT_EQ(ValueNames(*hive, u"Shared\\Sub").size(), 2000u);
  EXPECT_EQ(GetRaw(*hive, u"Shared\\Sub", u"w1-999")->data, BytesFromText(u"999"));
}

TEST(HiveProcesses, AnImportKilledAtAnyInstantLeavesAllOrNothing) {
  constexpr int kValues = 20000, kPerKey = 500;
  std::string reg =
      "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\Import]\r\n\"marker\"=\"after\"\r\n";
  for (int i = 0; i < kValues; ++i) {
    if (i % kPerKey == 0) reg += "[HKEY_LOCAL_MACHINE\\Import\\K" + std::to_string(i / kPerKey) + "]\r\n";
    reg += "\"v" + std::to_string(i) + "\"=hex:01,02,03,04,05,06,07,08,09,0a,0b,0c,0d,0e,0f,10\r\n";
  }
  const auto operations = ParseRegFile(reg);
  TempFolder folder;
  std::mt19937 random(12345);
  std::chrono::steady_clock::duration importTime{};
  int cut = 0;
  for (int round = 0; round < 6; ++round) {
    SCOPED_TRACE(round);
    const std::string file = folder.File("hive" + std::to_string(round) + ".db");
    PutText(*SqliteHive::Open(file), u"Import", u"marker", u"before");
    const auto start = std::chrono::steady_clock::now();
    const pid_t pid = Spawn([&] {
      ApplyRegFile(*SqliteHive::Open(file), operations);
      return true;
    });
    if (round == 0) {  // the first runs whole, to learn how long an import takes
      ASSERT_EQ(ExitStatus(pid), 0);
      importTime = std::chrono::steady_clock::now() - start;
    } else {
      std::this_thread::sleep_for(importTime * std::uniform_int_distribution<>(5, 100)(random) / 100);
      ::kill(pid, SIGKILL);
      cut += ExitStatus(pid) != 0;
    }
    const auto hive = SqliteHive::Open(file);
    std::size_t values = 0;
    for (int k = 0; k < kValues / kPerKey; ++k) values += ValueNames(*hive, u"Import\\K" + DecimalText(k)).size();
    const bool landed = values != 0;
    EXPECT_EQ(values, landed ? kValues : 0u);
    EXPECT_EQ(GetRaw(*hive, u"Import", u"marker")->data, BytesFromText(landed ? u"after" : u"before"));
  }
  EXPECT_GT(cut, 0) << "no import was cut short";
}

}  // namespace
}  // namespace nv::test
