#include "platform/posix/SqliteStatus.h"

#include <sqlite3.h>

namespace nv {

RegStatus StatusFromSqlite(int rc) noexcept {
  switch (rc & 0xFF) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
      return RegError::Success;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return RegError::Busy;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_SCHEMA:
      return RegError::BadDatabase;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return RegError::AccessDenied;
    case SQLITE_TOOBIG:
    case SQLITE_RANGE:
    case SQLITE_MISMATCH:
      return RegError::InvalidParameter;
    default:  // I/O errors, a full disk, no memory, a file that went away
      return RegError::IoFailed;
  }
}

}  // namespace nv
