// Hives that are damaged, odd files, read-only hives and names past Windows' limits: each is
// refused at once with the file and the reason, and a refused file is left byte for byte as
// it was, with nothing made beside it.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

#include "host/regfile/RegFile.h"
#include "platform/posix/SqliteHive.h"
#include "store/RegistryKey.h"
#include "tests/posix/HiveSupport.h"
#include "tests/support/TestRegistry.h"

namespace nv::test {
namespace {

void MakeHive(const std::string& file) {
  const auto hive = SqliteHive::Open(file);
  for (int k = 0; k < 60; ++k) {
    for (int v = 0; v < 20; ++v)
      PutText(*hive, u"SOFTWARE\\NOVRA\\K" + DecimalText(k), u"value" + DecimalText(v), u"text " + DecimalText(v));
  }
}

void RunSql(const std::string& file, const char* sql) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
  sqlite3_close(db);
}

std::int64_t RootPage(const std::string& file, const char* table) {
  sqlite3* db = nullptr;
  EXPECT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(db, "SELECT rootpage FROM sqlite_schema WHERE name = ?1", -1, &statement, nullptr);
  sqlite3_bind_text(statement, 1, table, -1, SQLITE_STATIC);
  const std::int64_t page = sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int64(statement, 0) : 0;
  sqlite3_finalize(statement);
  sqlite3_close(db);
  return page;
}

// One bit flipped near the end of every leaf page of an index: the pages stay well-formed
// (the quick check passes), but their entries no longer match the rows. The table of the
// format (stored like an index) is spared.
std::string WithDamagedIndexes(std::string bytes, std::int64_t sparedPage) {
  const std::size_t pageSize = static_cast<unsigned char>(bytes[16]) << 8 | static_cast<unsigned char>(bytes[17]);
  int flipped = 0;
  for (std::size_t page = pageSize; page + pageSize <= bytes.size(); page += pageSize) {
    if (bytes[page] != '\x0A' || static_cast<std::int64_t>(page / pageSize + 1) == sparedPage) continue;
    bytes[page + pageSize - 6] ^= 0x01;
    ++flipped;
  }
  EXPECT_GT(flipped, 0);
  return bytes;
}

std::vector<std::string> FilesIn(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

// Open must refuse `file` naming it and saying `why`, and leave it and its folder as they were.
void ExpectRefused(const std::string& file, const std::string& why) {
  const std::string folder = std::filesystem::path(file).parent_path();
  const std::vector<std::string> before = FilesIn(folder);
  const std::string bytes = std::filesystem::is_regular_file(file) ? ReadBytes(file) : std::string();
  try {
    SqliteHive::Open(file);
    ADD_FAILURE() << "opened " << file;
  } catch (const std::runtime_error& e) {
    EXPECT_NE(std::string(e.what()).find(file), std::string::npos) << e.what();
    EXPECT_NE(std::string(e.what()).find(why), std::string::npos) << e.what();
  }
  if (std::filesystem::is_regular_file(file)) {
    EXPECT_TRUE(ReadBytes(file) == bytes);
  }
  EXPECT_EQ(FilesIn(folder), before);
}

TEST(HiveDamage, DamagedHivesAndOddFilesAreRefusedUntouched) {
  TempFolder folder;
  const std::string good = folder.File("good.db");
  MakeHive(good);
  const std::string bytes = ReadBytes(good);

  WriteBytes(folder.File("index.db"), WithDamagedIndexes(bytes, RootPage(good, "meta")));
  ExpectRefused(folder.File("index.db"), "is damaged");

  WriteBytes(folder.File("loop.db"), bytes);  // two keys each other's parent: under no root
  RunSql(folder.File("loop.db"),
         "PRAGMA foreign_keys = OFF; UPDATE keys SET parent = (SELECT max(id) FROM keys) WHERE id = "
         "(SELECT min(id) FROM keys WHERE name = 'K1'); UPDATE keys SET parent = (SELECT min(id) FROM keys WHERE "
         "name = 'K1') WHERE id = (SELECT max(id) FROM keys)");
  ExpectRefused(folder.File("loop.db"), "under no root");

  WriteBytes(folder.File("foreign.db"), "");
  RunSql(folder.File("foreign.db"), "PRAGMA journal_mode = WAL; CREATE TABLE t(x); INSERT INTO t VALUES(1)");
  ExpectRefused(folder.File("foreign.db"), "is not an nvextch hive");

  // A foreign database whose writer died mid-transaction: its journal is not played back.
  WriteBytes(folder.File("journal.db"), "");
  RunSql(folder.File("journal.db"), "CREATE TABLE t(x); INSERT INTO t VALUES(zeroblob(100000))");
  if (::fork() == 0) {
    sqlite3* db = nullptr;
    sqlite3_open(folder.File("journal.db").c_str(), &db);
    sqlite3_exec(db, "PRAGMA cache_size = 1; BEGIN; UPDATE t SET x = zeroblob(200000)", nullptr, nullptr, nullptr);
    ::_exit(0);  // with its changes spilled into the file and its journal left behind
  }
  ::wait(nullptr);
  ASSERT_TRUE(std::filesystem::exists(folder.File("journal.db-journal")));
  ExpectRefused(folder.File("journal.db"), "journal.db");

  ASSERT_EQ(::mkfifo(folder.File("fifo").c_str(), 0600), 0);
  ExpectRefused(folder.File("fifo"), "a FIFO");
  std::filesystem::create_directory(folder.File("dir"));
  ExpectRefused(folder.File("dir"), "a folder");
  EXPECT_THROW(SqliteHive::Open("/dev/null"), std::runtime_error);
  EXPECT_THROW(SqliteHive::Open(""), std::runtime_error);
}

// A read-only hive answers every read without making a file beside it; a write fails.
TEST(HiveDamage, ReadOnlyHivesServeReads) {
  TempFolder folder;
  std::filesystem::create_directory(folder.File("ro"));
  const std::string inFolder = folder.File("ro/hive.db"), alone = folder.File("alone.db");
  for (const std::string& file : {inFolder, alone}) {
    MakeHive(file);
    if (file == alone) ::chmod(file.c_str(), 0444);
  }
  ::chmod(folder.File("ro").c_str(), 0555);
  for (const std::string& file : {inFolder, alone}) {
    SCOPED_TRACE(file);
    const std::string bytes = ReadBytes(file);
    {
      const auto hive = SqliteHive::Open(file);
      EXPECT_NE(hive->ReadOnlyReason().find(file), std::string::npos) << hive->ReadOnlyReason();
      EXPECT_EQ(GetRaw(*hive, u"SOFTWARE\\NOVRA\\K7", u"value3")->data.size(), 14u);
      RegKey key = 0;
      EXPECT_EQ(hive->CreateKey(RegRoot::LocalMachine, u"SOFTWARE\\NOVRA\\K7", RegAccess::AllAccess, key), 0);
      const std::uint8_t data[] = {1};
      EXPECT_EQ(hive->SetValue(key, u"new", RegType::Binary, data, 1), RegError::AccessDenied);
      EXPECT_NE(hive->CreateKey(RegRoot::LocalMachine, u"SOFTWARE\\New", RegAccess::AllAccess, key), 0);
      EXPECT_FALSE(std::filesystem::exists(file + "-wal"));
      EXPECT_FALSE(std::filesystem::exists(file + "-shm"));
    }
    EXPECT_TRUE(ReadBytes(file) == bytes);
  }
  ::chmod(folder.File("ro").c_str(), 0755);
}

// Windows' limits hold in the hive: what is made can be listed, exported and deleted.
TEST(HiveDamage, NamesPastTheLimitsAreRefusedWithAnErrorCode) {
  TempFolder folder;
  const auto hive = SqliteHive::Open(folder.File("hive.db"));
  Text deepest = u"Deep";
  for (std::size_t level = 2; level <= RegLimit::KeyDepth; ++level) deepest += u"\\L";
  RegKey key = 0;
  const struct Case {
    Text path;
    RegStatus status;
  } keys[] = {
      {deepest, RegError::Success},
      {deepest + u"\\Deeper", RegError::InvalidParameter},
      {u"Bad\\line\nfeed", RegError::InvalidParameter},
      {u"Bad\\carriage\rreturn", RegError::InvalidParameter},
      {u"Bad\\" + Text(256, u'k'), RegError::InvalidParameter},
  };
  for (const Case& c : keys) {
    EXPECT_EQ(hive->CreateKey(RegRoot::LocalMachine, c.path, RegAccess::AllAccess, key), c.status);
    if (key != 0) hive->CloseKey(key);
  }
  ASSERT_EQ(hive->CreateKey(RegRoot::LocalMachine, u"Names", RegAccess::AllAccess, key), 0);
  const std::uint8_t data[] = {1};
  EXPECT_EQ(hive->SetValue(key, Text(RegLimit::ValueNameLength, u'v'), RegType::Binary, data, 1), 0);
  EXPECT_EQ(hive->SetValue(key, Text(RegLimit::ValueNameLength + 1, u'v'), RegType::Binary, data, 1),
            RegError::InvalidParameter);
  EXPECT_EQ(hive->SetValue(key, u"a\nb", RegType::Binary, data, 1), RegError::InvalidParameter);
  hive->CloseKey(key);
  EXPECT_EQ(hive->DeleteTree(RegRoot::LocalMachine, u"Deep"), RegError::Success);
}

// An older hive may hold a name no .reg file can carry: the export writes everything else and
// names what it left out.
TEST(HiveDamage, ExportOfAnOlderHiveLeavesOutWhatAFileCannotCarry) {
  TempFolder folder;
  const std::string file = folder.File("old.db");
  MakeHive(file);
  RunSql(file,
         "UPDATE vals SET name = 'bad' || char(10) || 'name' WHERE id = (SELECT min(id) FROM vals);"
         "UPDATE keys SET name = 'K' || char(13), folded = x'004B000D' WHERE name = 'K5'");
  const auto hive = SqliteHive::Open(file);
  std::vector<std::string> leftOut;
  const std::string out = ExportRegKey(*hive, {RegRoot::LocalMachine, u"SOFTWARE\\NOVRA"}, false, leftOut);
  ASSERT_EQ(leftOut.size(), 2u);
  EXPECT_NE(leftOut[0].find("line break"), std::string::npos) << leftOut[0];
  EXPECT_NE(out.find("[HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\K59]"), std::string::npos);
  EXPECT_EQ(out.find("\"bad"), std::string::npos);
}

}  // namespace
}  // namespace nv::test
