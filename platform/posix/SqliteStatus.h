#pragma once
// SQLite result codes as the Win32 error codes that registry callers understand.
#include "store/Registry.h"

namespace nv {

// `rc` is an (extended) SQLite result code; SQLITE_OK, SQLITE_ROW and SQLITE_DONE succeed.
RegStatus StatusFromSqlite(int rc) noexcept;

}  // namespace nv
