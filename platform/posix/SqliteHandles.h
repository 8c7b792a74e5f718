#pragma once
// Owning handles of SQLite objects, declared without the SQLite header so that users of
// the hive never see it.
#include <memory>
#include <string>

struct sqlite3;
struct sqlite3_stmt;
struct sqlite3_blob;

namespace nv {

struct SqliteCloser {
  void operator()(sqlite3* db) const noexcept;
};
struct StatementFinalizer {
  void operator()(sqlite3_stmt* statement) const noexcept;
};
struct BlobCloser {
  void operator()(sqlite3_blob* blob) const noexcept;
};

using SqliteDb = std::unique_ptr<sqlite3, SqliteCloser>;
using SqliteStatement = std::unique_ptr<sqlite3_stmt, StatementFinalizer>;
using SqliteBlob = std::unique_ptr<sqlite3_blob, BlobCloser>;

// sqlite3_open_v2 of `name` with `flags`, into `db` (set even on failure, for its message),
// the library set up first: every connection of the program opens here.
int OpenSqlite(const std::string& name, int flags, SqliteDb& db);

}  // namespace nv
