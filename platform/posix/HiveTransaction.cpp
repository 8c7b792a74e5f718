#include "platform/posix/HiveTransaction.h"

#include <sqlite3.h>

#include "platform/posix/SqliteRun.h"

namespace nv {

HiveTransaction::~HiveTransaction() {
  if (!open_) return;
  if (nested_) {
    Execute(db_, "ROLLBACK TO hive_write; RELEASE hive_write");
  } else if (!sqlite3_get_autocommit(db_)) {
    Execute(db_, "ROLLBACK");
  }
}

int HiveTransaction::Begin() noexcept {
  // IMMEDIATE takes the write lock first, so waiting for another writer goes through the
  // busy timeout instead of failing when a read would have to turn into a write.
  const int rc = Execute(db_, nested_ ? "SAVEPOINT hive_write" : "BEGIN IMMEDIATE");
  open_ = rc == SQLITE_OK;
  return rc;
}

int HiveTransaction::Commit() noexcept {
  const int rc = Execute(db_, nested_ ? "RELEASE hive_write" : "COMMIT");
  if (rc == SQLITE_OK) open_ = false;
  return rc;
}

}  // namespace nv
