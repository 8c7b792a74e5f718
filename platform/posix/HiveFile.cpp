#include "platform/posix/HiveFile.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "common/FileKind.h"
#include "common/Utf.h"
#include "platform/posix/HiveCheck.h"
#include "platform/posix/HiveKeyPath.h"
#include "platform/posix/SqliteRun.h"
#include "store/Registry.h"

namespace nv {
namespace {

constexpr std::string_view kFormat = "nvextch hive";
constexpr std::int64_t kVersion = 1;
// Long enough for another process's import to finish; short enough that a stuck one is noticed.
constexpr int kBusyTimeoutMs = 10000;
// A variable of many MiB is a chain of overflow pages, each read with one system call:
// large pages make that chain short. Small values still share pages.
constexpr const char* kPageSizePragma = "PRAGMA page_size = 65536";
constexpr const char* kMapWholeFilePragma = "PRAGMA mmap_size = 2147418112";  // the library's largest

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

// A file found to be no usable hive, as opposed to one that could not be looked at (busy, say).
class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

[[noreturn]] void Refuse(const std::string& path, std::string_view what) {
  throw Refusal("hive " + path + " " + std::string(what));
}

[[noreturn]] void Fail(const std::string& path, std::string_view what) {
  throw std::runtime_error("hive " + path + " " + std::string(what));
}

std::string Busy() {
  return "is busy: another process held its lock past the " + std::to_string(kBusyTimeoutMs / 1000) +
         "-second wait";
}

std::string Detail(sqlite3* db) { return sqlite3_errmsg(db); }

SqliteDb Connect(const std::string& path, int flags, const std::string& name) {
  SqliteDb db;
  const int rc = OpenSqlite(name, flags, db);
  if (rc != SQLITE_OK) Fail(path, "cannot be opened: " + (db ? Detail(db.get()) : std::string(sqlite3_errstr(rc))));
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
      if ((rc & 0xFF) == SQLITE_CORRUPT) Refuse(path, "is damaged: " + Detail(db));
      if ((rc & 0xFF) == SQLITE_BUSY) Fail(path, Busy());
      Fail(path, "cannot be read: " + Detail(db));
    }
    return owned;
  }();
  const int rc = sqlite3_step(statement.get());
  if (rc == SQLITE_DONE) return false;
  if (rc != SQLITE_ROW) {
    if ((rc & 0xFF) == SQLITE_NOTADB) Refuse(path, "is not an nvextch hive");
    if ((rc & 0xFF) == SQLITE_CORRUPT) Refuse(path, "is damaged: " + Detail(db));
    if ((rc & 0xFF) == SQLITE_BUSY) Fail(path, Busy());
    Fail(path, "cannot be read: " + Detail(db));
  }
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0));
  text = bytes == nullptr ? std::string()
                          : std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement.get(), 0)));
  return true;
}

// Every page read once and every index compared with its table: a damaged hive is refused
// before anything is written (and before a walk over a damaged index could go round forever).
void CheckPages(sqlite3* db, const std::string& path) {
  std::vector<std::string> problems;
  try {
    problems = HiveProblems(db, 3);
  } catch (const std::runtime_error& e) {
    if ((sqlite3_errcode(db) & 0xFF) == SQLITE_BUSY) Fail(path, Busy());
    Fail(path, std::string("cannot be checked: ") + e.what());
  }
  if (problems.empty()) return;
  std::string text;
  for (const std::string& problem : problems) text += (text.empty() ? "" : "; ") + problem;
  Refuse(path, "is damaged (nvhost hive check FILE lists what is wrong, nvhost hive recover FILE OUT saves what can "
               "be read): " + text);
}

// True when the file is a hive of ours, false when it is an empty database that may be set up;
// refuses anything else. Read-only, so a foreign or damaged file is left exactly as it was.
bool IsExistingHive(sqlite3* db, const std::string& path) {
  // The check looks at every page: mapped, it reads them in place instead of copying each
  // one out of the file.
  Execute(db, kMapWholeFilePragma);
  std::string text;
  QueryOne(db, path, "SELECT count(*) FROM sqlite_schema", text);
  if (text == "0") return false;
  if (!QueryOne(db, path, "SELECT value FROM meta WHERE name = 'format'", text) || text != kFormat)
    Refuse(path, "is not an nvextch hive");
  if (!QueryOne(db, path, "SELECT value FROM meta WHERE name = 'version'", text))
    Refuse(path, "is damaged: it has no format version");
  std::int64_t version = 0;
  const auto [end, parsed] = std::from_chars(text.data(), text.data() + text.size(), version);
  if (parsed != std::errc() || end != text.data() + text.size() || version < 1)
    Refuse(path, "is damaged: its format version is \"" + text + "\"");
  if (version > kVersion) Refuse(path, "was written by a newer nvextch (hive format " + text + ")");
  CheckPages(db, path);
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
  if ((rc & 0xFF) == SQLITE_BUSY) Fail(path, Busy());
  if (rc != SQLITE_ROW) Fail(path, "cannot be opened: " + Detail(db));
  const auto* mode = reinterpret_cast<const char*>(sqlite3_column_text(pragma.get(), 0));
  if (mode == nullptr || std::string_view(mode) != "wal")
    Fail(path, "cannot use write-ahead logging (journal mode " + std::string(mode == nullptr ? "?" : mode) + ")");
}

void CreateParentFolders(const std::string& path) {
  const std::filesystem::path parent = std::filesystem::path(path).parent_path();
  std::error_code error;
  if (!parent.empty() && !std::filesystem::is_directory(parent, error)) {
    std::filesystem::create_directories(parent, error);
    if (error) Fail(path, "cannot be created: folder " + parent.string() + ": " + error.message());
  }
}

void Initialise(sqlite3* db, const std::string& path) {
  // Set before the first table makes the file's first page.
  int rc = Execute(db, kPageSizePragma);
  if (rc == SQLITE_OK) rc = Execute(db, "BEGIN IMMEDIATE");
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
    Fail(path, "cannot be set up: " + detail);
  }
}

// SQLite's URI form, so that options can follow the name.
std::string UriOf(const std::string& path, const char* options) {
  std::string uri = "file:";
  for (const char c : path) {
    if (c == '%' || c == '?' || c == '#') {
      static constexpr char kHex[] = "0123456789ABCDEF";
      uri += '%';
      uri += kHex[static_cast<unsigned char>(c) >> 4];
      uri += kHex[c & 0xF];
    } else {
      uri += c;
    }
  }
  return uri + "?" + options;
}

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

bool NoWriteBits(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}

std::string FolderOf(const std::string& path) {
  const std::filesystem::path parent = std::filesystem::path(path).parent_path();
  return parent.empty() ? std::string(".") : parent.string();
}

// A reader of a hive in WAL mode needs the shared-memory file beside it; a hive that no
// writer has open has no log to read, so it is read as it stands and nothing is made.
SqliteDb ConnectForReading(const std::string& path) {
  if (Exists(path + "-wal")) return Connect(path, SQLITE_OPEN_READONLY, path);
  return Connect(path, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, UriOf(path, "immutable=1"));
}

// After a refusal, the log and shared-memory files that the check's own reader made are
// removed, unless something has been written to them since.
void RemoveMadeSidecars(const std::string& path, bool walBefore, bool shmBefore) {
  std::error_code error;
  const std::string wal = path + "-wal", shm = path + "-shm";
  if (!walBefore && Exists(wal) && std::filesystem::file_size(wal, error) == 0 && !error)
    std::filesystem::remove(wal, error);
  if (!shmBefore && !Exists(wal)) std::filesystem::remove(shm, error);
}

}  // namespace

std::string HiveWriteBlocker(const std::string& path) {
  if (Exists(path) && (NoWriteBits(path) || ::access(path.c_str(), W_OK) != 0)) return "the file is read-only";
  const std::string folder = FolderOf(path);
  if (Exists(folder) && (NoWriteBits(folder) || ::access(folder.c_str(), W_OK | X_OK) != 0))
    return "its folder " + folder + " is read-only";
  return {};
}

SqliteDb OpenHiveForInspection(const std::string& path) {
  if (path.empty()) Fail(path, "has no name");
  if (const std::string kind = NonRegularFileKind(path); !kind.empty()) Refuse(path, "is " + kind + ", not a hive");
  if (!Exists(path)) Fail(path, "does not exist");
  return ConnectForReading(path);
}

HiveConnection OpenHiveDatabase(const std::string& path) {
  if (path.empty()) Fail(path, "has no name");
  if (const std::string kind = NonRegularFileKind(path); !kind.empty())
    Refuse(path, "is " + kind + ", not an nvextch hive");
  const bool exists = Exists(path);
  std::string blocker = HiveWriteBlocker(path);
  bool ready = false;
  if (exists && !blocker.empty()) {
    std::error_code error;
    if (std::filesystem::file_size(path, error) == 0)
      Refuse(path, "is empty and cannot be set up as a hive: " + blocker);
    HiveConnection reading{ConnectForReading(path), "hive " + path + " cannot be written: " + blocker};
    if (!IsExistingHive(reading.db.get(), path))
      Refuse(path, "is an empty database and cannot be set up as a hive: " + blocker);
    Execute(reading.db.get(), "PRAGMA foreign_keys = ON");
    return reading;
  }
  if (!exists && !blocker.empty()) Fail(path, "cannot be created: " + blocker);
  SqliteDb db;
  if (exists) {
    std::error_code error;
    if (std::filesystem::file_size(path, error) > 0) {
      const bool walBefore = Exists(path + "-wal"), shmBefore = Exists(path + "-shm");
      try {
        // The connection that checks the file is the one that goes on to use it: the pages
        // the check has mapped are not mapped again. Only a file with a journal left behind
        // is checked read-only first, since a connection that may write would play that
        // journal back into a file that may not be ours.
        if (Exists(path + "-journal")) {
          ready = IsExistingHive(Connect(path, SQLITE_OPEN_READONLY, path).get(), path);
        } else {
          db = Connect(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, path);
          ready = IsExistingHive(db.get(), path);
        }
      } catch (const Refusal&) {
        db.reset();
        RemoveMadeSidecars(path, walBefore, shmBefore);
        throw;
      }
    }
  } else {
    CreateParentFolders(path);
  }

  if (!db) db = Connect(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, path);
  // A rollback journal while the tables are created: a process that looks at the same new
  // file meanwhile sees either no tables or all of them.
  if (!ready) Initialise(db.get(), path);
  SwitchToWal(db.get(), path);
  // In WAL mode NORMAL loses no committed write when a process dies, only on power loss.
  if (Execute(db.get(), "PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON") != SQLITE_OK)
    Fail(path, "cannot be configured: " + Detail(db.get()));
  // A large value is then copied from the file's pages in place, with no system call each.
  Execute(db.get(), kMapWholeFilePragma);
  return {std::move(db), {}};
}

}  // namespace nv
