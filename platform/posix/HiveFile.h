#pragma once
// Finding, checking and creating the hive file.
#include <string>

#include "platform/posix/SqliteHandles.h"

namespace nv {

struct HiveConnection {
  SqliteDb db;
  // Empty when the hive may be written; else why not ("the file is read-only"), and the
  // connection is read-only and has made no file beside the hive.
  std::string readOnlyReason;
};

// A connection to the hive at `path`, ready for use. A new path is made a hive (its folders
// too); an existing path must be a regular file, and is checked (every page, every index,
// the tree) before it is used: it is refused with a std::runtime_error naming it and saying
// why when it is not a hive, was written by a newer format or is damaged, and is then left
// byte for byte as it was, with no file made beside it. A hive that cannot be written (the
// file or its folder) is opened read-only.
HiveConnection OpenHiveDatabase(const std::string& path);

// A read-only connection that makes no file beside the hive (unless a writer left its log,
// which must then be read too), with no check at all: for checking and recovering damaged
// hives. Throws std::runtime_error naming the file.
SqliteDb OpenHiveForInspection(const std::string& path);

// Why the hive at `path` cannot be written, or nothing.
std::string HiveWriteBlocker(const std::string& path);

}  // namespace nv
