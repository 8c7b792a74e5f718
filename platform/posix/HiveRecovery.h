#pragma once
// Checking a hive on demand, and copying out of a damaged one what can still be read.
#include <cstddef>
#include <string>
#include <vector>

namespace nv {

// Every problem the full check finds in the hive at `path` (up to `limit`); empty when it is
// sound. The file is only read. Throws std::runtime_error when it cannot be read at all.
std::vector<std::string> CheckHiveFile(const std::string& path, int limit);

struct RecoveryReport {
  std::size_t keys = 0, values = 0;  // copied
  std::vector<std::string> lost;     // what could not be copied, and why; empty when all was
};

// Reads the keys and values of `damaged` row by row, around unreadable pages and without
// trusting its indexes, and writes those that sit under a root into a new hive `out`, which
// must not exist yet. `damaged` is only read.
RecoveryReport RecoverHive(const std::string& damaged, const std::string& out);

}  // namespace nv
