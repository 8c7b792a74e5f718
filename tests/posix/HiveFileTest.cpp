// The hive file: made when missing, refused untouched when it is anything but a hive.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <stdexcept>

#include "platform/posix/SqliteHive.h"
#include "tests/posix/HiveSupport.h"
#include "tests/support/TestRegistry.h"

namespace nv::test {
namespace {

void MakeHive(const std::string& file, int values, std::size_t valueSize = 100) {
  const auto hive = SqliteHive::Open(file);
  for (int i = 0; i < values; ++i)
    PutRaw(*hive, u"SOFTWARE\\NOVRA", u"v" + DecimalText(i), RegType::Binary, std::vector<std::uint8_t>(valueSize, 0x5A));
}

// The page size a database file's header gives (bytes 16 and 17, big-endian; 1 is 65,536).
std::size_t PageSizeOf(const std::string& bytes) {
  const std::size_t size = (static_cast<unsigned char>(bytes[16]) << 8) | static_cast<unsigned char>(bytes[17]);
  return size == 1 ? 65536 : size;
}

TEST(HiveFile, IsMadeWithItsFoldersAndAnEmptyFileIsTakenOver) {
  TempFolder folder;
  const std::string nested = folder.File("a/b/hive.db"), empty = folder.File("empty.db");
  WriteBytes(empty, "");
  for (const std::string& file : {nested, empty}) {
    MakeHive(file, 1);
    EXPECT_EQ(GetRaw(*SqliteHive::Open(file), u"software\\novra", u"V0")->data.size(), 100u);
  }
}

TEST(HiveFile, RefusesWhatIsNotAHiveAndLeavesItAsItWas) {
  TempFolder folder;
  const std::string hive = folder.File("hive.db");
  MakeHive(hive, 400, 1000);
  const std::string good = ReadBytes(hive);
  const std::size_t page = PageSizeOf(good);
  ASSERT_GT(good.size(), 6 * page);

  const struct Case {
    const char* name;
    std::string bytes;
    const char* sql;  // run on the bytes first
    const char* message;
  } cases[] = {
      {"text.db", "Windows Registry Editor Version 5.00\r\n", nullptr, "is not an nvextch hive"},
      {"binary.db", std::string(5000, '\x7F'), nullptr, "is not an nvextch hive"},
      {"foreign.db", "", "CREATE TABLE t(x); INSERT INTO t VALUES(1)", "is not an nvextch hive"},
      {"newer.db", good, "UPDATE meta SET value = 2 WHERE name = 'version'", "newer"},
      {"pages.db", good.substr(0, 5 * page) + std::string(page, '\x55') + good.substr(6 * page), nullptr, "is damaged"},
      {"truncated.db", good.substr(0, good.size() / 2), nullptr, "is damaged"},
      {"header.db", good.substr(0, 16) + std::string(84, '\xFF') + good.substr(100), nullptr, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string file = folder.File(c.name);
    WriteBytes(file, c.bytes);
    if (c.sql != nullptr) {
      sqlite3* db = nullptr;
      ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
      EXPECT_EQ(sqlite3_exec(db, c.sql, nullptr, nullptr, nullptr), SQLITE_OK);
      sqlite3_close(db);
    }
    const std::string before = ReadBytes(file);
    try {
      SqliteHive::Open(file);
      ADD_FAILURE() << "opened";
    } catch (const std::runtime_error& e) {
      EXPECT_NE(std::string(e.what()).find(file), std::string::npos) << e.what();
      EXPECT_NE(std::string(e.what()).find(c.message), std::string::npos) << e.what();
    }
    EXPECT_TRUE(ReadBytes(file) == before);
  }
  EXPECT_THROW(SqliteHive::Open(folder.File("")), std::runtime_error);  // a folder
}

}  // namespace
}  // namespace nv::test
