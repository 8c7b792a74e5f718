#include "platform/posix/SqliteHandles.h"

#include <sqlite3.h>

namespace nv {

void SqliteCloser::operator()(sqlite3* db) const noexcept { sqlite3_close_v2(db); }
void StatementFinalizer::operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
void BlobCloser::operator()(sqlite3_blob* blob) const noexcept { sqlite3_blob_close(blob); }

}  // namespace nv
