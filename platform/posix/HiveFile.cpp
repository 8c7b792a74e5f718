#include "platform/posix/HiveFile.h"

#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "common/Utf.h"
#include "platform/posix/HiveKeyPath.h"
#include "platform/posix/SqliteRun.h"
#include "store/Registry.h"

namespace nv {
namespace {

constexpr std::string_view kFormat = "nvextch hive";
constexpr std::int64_t kVersion = 1;
// Long enough for another process's import to finish; short enough that a stuck one is noticed.
constexpr int kBusyTimeoutMs = 10000;

// Values keep their first-write order through their row id; names are compared by their
// folded form (see FoldName), which is unique among the children of a key and the values of
// a key. Deleting a key takes its sub-keys and values with it.
constexpr const char* kSchema = R"sql(
CREATE TABLE IF NOT EXISTS meta(name TEXT PRIMARY KEY, value) WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS keys(
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  parent INTEGER REFERENCES keys(id) ON DELETE CASCADE,
  name TEXT NOT NULL,
  folded BLOB NOT NULL,
  UNIQUE(parent, folded));
CREATE TABLE IF NOT EXISTS vals(
  id INTEGER PRIMARY KEY,
  key INTEGER NOT NULL REFERENCES keys(id) ON DELETE CASCADE,
  name TEXT NOT NULL,
  folded BLOB NOT NULL,
  type INTEGER NOT NULL,
  data BLOB NOT NULL,
  UNIQUE(key, folded));
CREATE INDEX IF NOT EXISTS vals_in_order ON vals(key, id);
)sql";

struct Root {
  RegKey id;
  std::u16string_view name;
};
constexpr Root kRoots[] = {{RegRoot::ClassesRoot, u"HKEY_CLASSES_ROOT"},
                           {RegRoot::CurrentUser, u"HKEY_CURRENT_USER"},
                           {RegRoot::LocalMachine, u"HKEY_LOCAL_MACHINE"},
                           {RegRoot::Users, u"HKEY_USERS"},
                           {RegRoot::CurrentConfig, u"HKEY_CURRENT_CONFIG"}};

[[noreturn]] void Refuse(const std::string& path, std::string_view what) {
  throw std::runtime_error("hive " + path + " " + std::string(what));
}

std::string Detail(sqlite3* db) { return sqlite3_errmsg(db); }

SqliteDb Connect(const std::string& path, int flags) {
  sqlite3* raw = nullptr;
  const int rc = sqlite3_open_v2(path.c_str(), &raw, flags, nullptr);
  SqliteDb db(raw);
  if (rc != SQLITE_OK) Refuse(path, "cannot be opened: " + (db ? Detail(db.get()) : std::string(sqlite3_errstr(rc))));
  sqlite3_extended_result_codes(db.get(), 1);
  sqlite3_busy_timeout(db.get(), kBusyTimeoutMs);
  return db;
}

// Runs a query expected to give one row; a failure that means "this is no hive" or "this
// hive is damaged" is turned into the matching refusal.
bool QueryOne(sqlite3* db, const std::string& path, std::string_view sql, std::string& text) {
  const SqliteStatement statement = [&] {
    sqlite3_stmt* raw = nullptr;
    const int rc = sqlite3_prepare_v2(db, sql.data(), static_cast<int>(sql.size()), &raw, nullptr);
    SqliteStatement owned(raw);
    if (rc != SQLITE_OK) {
      if ((rc & 0xFF) == SQLITE_NOTADB || (rc & 0xFF) == SQLITE_ERROR) Refuse(path, "is not an nvextch hive");
      if ((rc & 0xFF) == SQLITE_CORRUPT) Refuse(path, "is corrupt: " + Detail(db));
      Refuse(path, "cannot be read: " + Detail(db));
    }
    return owned;
  }();
  const int rc = sqlite3_step(statement.get());
  if (rc == SQLITE_DONE) return false;
  if (rc != SQLITE_ROW) {
    if ((rc & 0xFF) == SQLITE_NOTADB) Refuse(path, "is not an nvextch hive");
    if ((rc & 0xFF) == SQLITE_CORRUPT) Refuse(path, "is corrupt: " + Detail(db));
    Refuse(path, "cannot be read: " + Detail(db));
  }
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0));
  text = bytes == nullptr ? std::string()
                          : std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement.get(), 0)));
  return true;
}

// Every page read once; a damaged page or b-tree is refused before anything is written.
void CheckPages(sqlite3* db, const std::string& path) {
  const SqliteStatement check = Prepare(db, "PRAGMA quick_check(3)");
  std::string problems;
  int rc;
  while ((rc = sqlite3_step(check.get())) == SQLITE_ROW) {
    const auto* row = reinterpret_cast<const char*>(sqlite3_column_text(check.get(), 0));
    std::string_view line = row == nullptr ? std::string_view() : std::string_view(row);
    if (line == "ok") continue;
    if (line.starts_with("***")) line.remove_prefix(std::min(line.size(), line.find('\n') + 1));
    for (const char c : line) problems += c == '\n' ? std::string("; ") : std::string(1, c);
  }
  if (rc != SQLITE_DONE) Refuse(path, "is corrupt: " + Detail(db));
  if (!problems.empty()) Refuse(path, "is corrupt: " + problems);
}

// True when the file is a hive of ours, false when it is an empty database that may be set up;
// refuses anything else. Read-only, so a foreign or damaged file is left exactly as it was.
bool IsExistingHive(const std::string& path) {
  const SqliteDb db = Connect(path, SQLITE_OPEN_READONLY);
  std::string text;
  QueryOne(db.get(), path, "SELECT count(*) FROM sqlite_schema", text);
  if (text == "0") return false;
  if (!QueryOne(db.get(), path, "SELECT value FROM meta WHERE name = 'format'", text) || text != kFormat)
    Refuse(path, "is not an nvextch hive");
  if (!QueryOne(db.get(), path, "SELECT value FROM meta WHERE name = 'version'", text))
    Refuse(path, "is corrupt: it has no format version");
  std::int64_t version = 0;
  const auto [end, parsed] = std::from_chars(text.data(), text.data() + text.size(), version);
  if (parsed != std::errc() || end != text.data() + text.size() || version < 1)
    Refuse(path, "is corrupt: its format version is \"" + text + "\"");
  if (version > kVersion) Refuse(path, "was written by a newer nvextch (hive format " + text + ")");
  CheckPages(db.get(), path);
  return true;
}

// Switching a new file to WAL needs it to itself. Processes making the same new file meet
// here, and SQLite answers "busy" at once instead of waiting, to stay clear of a deadlock.
void SwitchToWal(sqlite3* db, const std::string& path) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(kBusyTimeoutMs);
  const SqliteStatement pragma = Prepare(db, "PRAGMA journal_mode = WAL");
  int rc;
  while (((rc = sqlite3_step(pragma.get())) & 0xFF) == SQLITE_BUSY && std::chrono::steady_clock::now() < deadline) {
    sqlite3_reset(pragma.get());
    sqlite3_sleep(2);
  }
  if (rc != SQLITE_ROW) Refuse(path, "cannot be opened: " + Detail(db));
  const auto* mode = reinterpret_cast<const char*>(sqlite3_column_text(pragma.get(), 0));
  if (mode == nullptr || std::string_view(mode) != "wal")
    Refuse(path, "cannot use write-ahead logging (journal mode " + std::string(mode == nullptr ? "?" : mode) + ")");
}

void CreateParentFolders(const std::string& path) {
  const std::filesystem::path parent = std::filesystem::path(path).parent_path();
  std::error_code error;
  if (!parent.empty() && !std::filesystem::is_directory(parent, error)) {
    std::filesystem::create_directories(parent, error);
    if (error) Refuse(path, "cannot be created: folder " + parent.string() + ": " + error.message());
  }
}

void Initialise(sqlite3* db, const std::string& path) {
  int rc = Execute(db, "BEGIN IMMEDIATE");
  if (rc == SQLITE_OK) rc = Execute(db, kSchema);
  if (rc == SQLITE_OK) {
    const SqliteStatement insertRoot =
        Prepare(db, "INSERT OR IGNORE INTO keys(id, parent, name, folded) VALUES(?1, NULL, ?2, ?3)");
    std::vector<std::uint8_t> folded;
    for (const Root& root : kRoots) {
      FoldName(root.name, folded);
      StatementRun run(insertRoot);
      run.Bind(1, static_cast<std::int64_t>(root.id)).BindText(2, ToUtf8(root.name)).BindBlob(3, folded);
      rc = run.Step();
      if (rc != SQLITE_DONE) break;
      rc = SQLITE_OK;
    }
  }
  if (rc == SQLITE_OK) {
    const std::string meta = "INSERT OR IGNORE INTO meta VALUES('format', '" + std::string(kFormat) +
                             "'), ('version', " + std::to_string(kVersion) + ")";
    rc = Execute(db, meta.c_str());
  }
  if (rc == SQLITE_OK) rc = Execute(db, "COMMIT");
  if (rc != SQLITE_OK) {
    const std::string detail = Detail(db);
    Execute(db, "ROLLBACK");
    Refuse(path, "cannot be set up: " + detail);
  }
}

}  // namespace

SqliteDb OpenHiveDatabase(const std::string& path) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (std::filesystem::is_directory(status)) Refuse(path, "is a folder, not an nvextch hive");
  bool ready = false;
  if (std::filesystem::exists(status)) {
    if (std::filesystem::file_size(path, error) > 0) ready = IsExistingHive(path);
  } else {
    CreateParentFolders(path);
  }

  SqliteDb db = Connect(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX);
  // A rollback journal while the tables are created: a process that looks at the same new
  // file meanwhile sees either no tables or all of them.
  if (!ready) Initialise(db.get(), path);
  SwitchToWal(db.get(), path);
  // In WAL mode NORMAL loses no committed write when a process dies, only on power loss.
  if (Execute(db.get(), "PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON") != SQLITE_OK)
    Refuse(path, "cannot be configured: " + Detail(db.get()));
  return db;
}

}  // namespace nv
