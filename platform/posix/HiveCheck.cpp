#include "platform/posix/HiveCheck.h"

#include <sqlite3.h>

#include <stdexcept>
#include <string_view>

#include "platform/posix/SqliteRun.h"

namespace nv {
namespace {

// Keys reached from the five roots; a key that is not (its parent gone, or a loop of
// parents) could never be opened, listed or deleted.
constexpr const char* kUnreachableKeys = R"sql(
WITH RECURSIVE reached(id) AS (
  SELECT id FROM keys WHERE parent IS NULL AND id IN (2147483648, 2147483649, 2147483650, 2147483651, 2147483653)
  UNION ALL SELECT k.id FROM keys k JOIN reached r ON k.parent = r.id)
SELECT (SELECT count(*) FROM keys) - (SELECT count(*) FROM reached))sql";
constexpr const char* kOrphanValues = "SELECT count(*) FROM vals WHERE key NOT IN (SELECT id FROM keys)";

void CheckFailed(sqlite3* db) { throw std::runtime_error(std::string("the check cannot run: ") + sqlite3_errmsg(db)); }

std::int64_t Count(sqlite3* db, const char* sql) {
  const SqliteStatement statement = Prepare(db, sql);
  const int rc = sqlite3_step(statement.get());
  if (rc != SQLITE_ROW) CheckFailed(db);
  return sqlite3_column_int64(statement.get(), 0);
}

}  // namespace

std::vector<std::string> HiveProblems(sqlite3* db, int limit) {
  std::vector<std::string> problems;
  const std::string sql = "PRAGMA integrity_check(" + std::to_string(limit) + ")";
  sqlite3_stmt* raw = nullptr;
  int rc = sqlite3_prepare_v2(db, sql.c_str(), -1, &raw, nullptr);
  const SqliteStatement check(raw);
  if (rc != SQLITE_OK) {
    if ((rc & 0xFF) == SQLITE_CORRUPT || (rc & 0xFF) == SQLITE_NOTADB) return {sqlite3_errmsg(db)};
    CheckFailed(db);
  }
  while ((rc = sqlite3_step(check.get())) == SQLITE_ROW) {
    const auto* row = reinterpret_cast<const char*>(sqlite3_column_text(check.get(), 0));
    std::string_view text = row == nullptr ? std::string_view() : std::string_view(row);
    if (text == "ok") continue;
    // "*** in database main ***" heads the list; each problem is a line.
    while (!text.empty()) {
      const std::size_t end = text.find('\n');
      const std::string_view line = text.substr(0, end);
      if (!line.empty() && !line.starts_with("***")) problems.emplace_back(line);
      text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
  }
  if ((rc & 0xFF) == SQLITE_CORRUPT || (rc & 0xFF) == SQLITE_NOTADB) {
    problems.emplace_back(sqlite3_errmsg(db));
  } else if (rc != SQLITE_DONE) {
    CheckFailed(db);
  }
  if (!problems.empty()) return problems;  // the tree is only worth walking over sound pages
  if (const std::int64_t lost = Count(db, kUnreachableKeys); lost > 0)
    problems.push_back(std::to_string(lost) + " keys are under no root key (a missing parent or a loop of parents)");
  if (const std::int64_t lost = Count(db, kOrphanValues); lost > 0)
    problems.push_back(std::to_string(lost) + " values belong to no key");
  return problems;
}

}  // namespace nv
