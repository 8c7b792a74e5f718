#pragma once
// Finding, checking and creating the hive file.
#include <string>

#include "platform/posix/SqliteHandles.h"

namespace nv {

// A read-write connection to the hive at `path`, ready for use: the file (and its folders)
// is created when missing; an existing file is first checked through a read-only connection
// and refused with a std::runtime_error naming it when it is not a hive, was written by a
// newer format or is corrupt, so such a file is never written to.
SqliteDb OpenHiveDatabase(const std::string& path);

}  // namespace nv
