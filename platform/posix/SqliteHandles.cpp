#include "platform/posix/SqliteHandles.h"

#include <sqlite3.h>

namespace nv {

void SqliteCloser::operator()(sqlite3* db) const noexcept { sqlite3_close_v2(db); }
void StatementFinalizer::operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
void BlobCloser::operator()(sqlite3_blob* blob) const noexcept { sqlite3_blob_close(blob); }

int OpenSqlite(const std::string& name, int flags, SqliteDb& db) {
  // The library's count of its own memory takes a global lock on every allocation, and
  // nothing here reads it. Set once, before the library starts; refused (and harmless) if
  // it had started already.
  [[maybe_unused]] static const int uncounted = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
  sqlite3* raw = nullptr;
  const int rc = sqlite3_open_v2(name.c_str(), &raw, flags, nullptr);
  db.reset(raw);
  return rc;
}

}  // namespace nv
