#pragma once
// What the hive's own queries rely on, checked: every page and every index (the full
// integrity check, which costs little more than reading the file once), and the tree itself
// (every key under a root, every value under a key).
#include <string>
#include <vector>

struct sqlite3;

namespace nv {

// Up to `limit` problems, each in a few words; empty when the hive is sound. Throws
// std::runtime_error when the check itself cannot run (the file is locked, say).
std::vector<std::string> HiveProblems(sqlite3* db, int limit);

}  // namespace nv
