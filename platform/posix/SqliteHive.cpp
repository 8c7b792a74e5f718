#include "platform/posix/SqliteHive.h"

#include <sqlite3.h>

#include <cstdint>
#include <stdexcept>

#include "platform/posix/HiveFile.h"
#include "platform/posix/HiveKeyPath.h"
#include "platform/posix/SqliteRun.h"
#include "platform/posix/SqliteStatus.h"

namespace nv {
namespace {

// Handles look like Windows ones: small multiples of four, never zero and never a root, and
// they fit the 32-bit numbers through which the host passes keys around.
constexpr RegKey kFirstHandle = 0x1000;
constexpr RegKey kLastHandle = 0x7FFFFFFC;
constexpr std::size_t kPathCacheSize = 4096;

// The key at the end of a path of `depth` names in one statement: k1 is the first name under
// ?1, kN the last; the names bind from ?2.
std::string FindPathSql(std::size_t depth) {
  std::string sql = "SELECT k" + std::to_string(depth) + ".id FROM keys k1";
  for (std::size_t i = 2; i <= depth; ++i) {
    const std::string k = "k" + std::to_string(i);
    sql += " JOIN keys " + k + " ON " + k + ".parent = k" + std::to_string(i - 1) + ".id AND " + k + ".folded = ?" +
           std::to_string(i + 1);
  }
  return sql + " WHERE k1.parent = ?1 AND k1.folded = ?2";
}

}  // namespace

std::unique_ptr<SqliteHive> SqliteHive::Open(const std::string& path) {
  HiveConnection connection = OpenHiveDatabase(path);
  try {
    return std::make_unique<SqliteHive>(PrivateTag{}, std::move(connection.db), std::move(connection.readOnlyReason));
  } catch (const std::runtime_error& e) {
    throw std::runtime_error("hive " + path + " cannot be used: " + e.what());
  }
}

SqliteHive::SqliteHive(PrivateTag, SqliteDb db, std::string readOnlyReason)
    : db_(std::move(db)), readOnlyReason_(std::move(readOnlyReason)), nextHandle_(kFirstHandle) {
  sqlite3* const d = db_.get();
  statements_.findChild = Prepare(d, "SELECT id FROM keys WHERE parent = ?1 AND folded = ?2");
  statements_.keyExists = Prepare(d, "SELECT 1 FROM keys WHERE id = ?1");
  statements_.lastKeyId = Prepare(d, "SELECT seq FROM sqlite_sequence WHERE name = 'keys'");
  statements_.insertKey = Prepare(d, "INSERT INTO keys(parent, name, folded) VALUES(?1, ?2, ?3)");
  statements_.deleteKey = Prepare(d, "DELETE FROM keys WHERE id = ?1");
  statements_.deleteChildren = Prepare(d, "DELETE FROM keys WHERE parent = ?1");
  statements_.deleteValues = Prepare(d, "DELETE FROM vals WHERE key = ?1");
  // Enumeration also gives what its cursor needs: the sort key and the hive's data version.
  statements_.enumKey = Prepare(d,
                                "SELECT name, folded, (SELECT data_version FROM pragma_data_version) FROM keys "
                                "WHERE parent = ?1 ORDER BY folded LIMIT 1 OFFSET ?2");
  statements_.enumKeyAfter = Prepare(d,
                                     "SELECT name, folded, (SELECT data_version FROM pragma_data_version) FROM keys "
                                     "WHERE parent = ?1 AND folded > ?2 ORDER BY folded LIMIT 1");
  // length() of a column alone does not load a large value's pages, nor does a CASE that
  // leaves the column out: a large value is read from its pages into the caller's buffer.
  const std::string inlineData = "CASE WHEN length(data) <= " + std::to_string(kInlineValueBytes) + " THEN data END";
  statements_.queryValue =
      Prepare(d, "SELECT type, length(data), id, " + inlineData + " FROM vals WHERE key = ?1 AND folded = ?2");
  // An existing value keeps its name as first written and its place in the enumeration.
  statements_.setValue = Prepare(d,
                                 "INSERT INTO vals(key, name, folded, type, data) VALUES(?1, ?2, ?3, ?4, ?5) "
                                 "ON CONFLICT(key, folded) DO UPDATE SET type = excluded.type, data = excluded.data");
  statements_.updateValue = Prepare(d, "UPDATE vals SET type = ?3, data = ?4 WHERE key = ?1 AND folded = ?2");
  statements_.deleteValue = Prepare(d, "DELETE FROM vals WHERE key = ?1 AND folded = ?2");
  statements_.valueId = Prepare(d, "SELECT id FROM vals WHERE key = ?1 AND folded = ?2");
  const std::string enumColumns =
      "SELECT name, type, " + inlineData + ", id, (SELECT data_version FROM pragma_data_version), length(data) ";
  statements_.enumValue = Prepare(d, enumColumns + "FROM vals WHERE key = ?1 ORDER BY id LIMIT 1 OFFSET ?2");
  statements_.enumValueAfter = Prepare(d, enumColumns + "FROM vals WHERE key = ?1 AND id > ?2 ORDER BY id LIMIT 1");
  statements_.visitValues = Prepare(d,
                                    "SELECT name, type, length(data), CASE WHEN length(data) <= ?2 THEN data END "
                                    "FROM vals WHERE key = ?1 ORDER BY id");
  for (const RegKey root :
       {RegRoot::ClassesRoot, RegRoot::CurrentUser, RegRoot::LocalMachine, RegRoot::Users, RegRoot::CurrentConfig}) {
    handles_[root] = KeyAccess{static_cast<std::int64_t>(root), 0xFFFFFFFFu, 0, {}, {}};
  }
}

// The statements go before the connection (declared after it); the close rolls back a batch
// left open.
SqliteHive::~SqliteHive() = default;

SqliteHive::KeyAccess* SqliteHive::Lookup(RegKey handle) {
  const auto found = handles_.find(handle);
  return found == handles_.end() ? nullptr : &found->second;
}

bool SqliteHive::Continues(const EnumCursor& cursor, std::uint32_t index) const {
  return cursor.index >= 0 && index == cursor.index + 1 && cursor.changes == sqlite3_total_changes64(db_.get());
}

RegKey SqliteHive::NewHandle(std::int64_t id, std::uint32_t access, std::size_t depth) {
  while (handles_.contains(nextHandle_)) nextHandle_ = nextHandle_ >= kLastHandle ? kFirstHandle : nextHandle_ + 4;
  const RegKey handle = nextHandle_;
  handles_.emplace(handle, KeyAccess{id, access, depth, {}, {}});
  nextHandle_ = nextHandle_ >= kLastHandle ? kFirstHandle : nextHandle_ + 4;
  return handle;
}

RegStatus SqliteHive::UnlessDeleted(std::int64_t id, RegStatus otherwise) {
  StatementRun run(statements_.keyExists);
  const int rc = run.Bind(1, id).Step();
  if (rc == SQLITE_ROW) return otherwise;
  if (rc == SQLITE_DONE) return RegError::KeyDeleted;
  return StatusFromSqlite(rc);
}

RegStatus SqliteHive::Walk(std::int64_t& id, std::span<const TextView> names, std::size_t& found) {
  found = 0;
  for (const TextView name : names) {
    FoldName(name, folded_);
    StatementRun run(statements_.findChild);
    const int rc = run.Bind(1, id).BindBlob(2, folded_).Step();
    if (rc == SQLITE_DONE) break;
    if (rc != SQLITE_ROW) return StatusFromSqlite(rc);
    id = run.Int(0);
    ++found;
  }
  return RegError::Success;
}

RegStatus SqliteHive::Resolve(std::int64_t& id, std::span<const TextView> names, std::size_t& found) {
  if (names.size() < 2 || names.size() >= statements_.findPath.size()) return Walk(id, names, found);
  pathKey_.assign(reinterpret_cast<const char*>(&id), sizeof id);
  for (const TextView name : names) {
    FoldName(name, folded_);
    pathKey_.append(reinterpret_cast<const char*>(folded_.data()), folded_.size()).append("\0\\", 2);
  }
  // SQLite may have rolled the batch back by itself (a full disk): then the lock is gone too.
  const std::uint64_t batch = batchBegan_ && !sqlite3_get_autocommit(db_.get()) ? batchSerial_ : 0;
  if (const auto cached = pathCache_.find(pathKey_); cached != pathCache_.end()) {
    if (batch != 0 && cached->second.confirmedInBatch == batch) {
      id = cached->second.id;
      found = names.size();
      return RegError::Success;
    }
    StatementRun run(statements_.keyExists);
    const int rc = run.Bind(1, cached->second.id).Step();
    if (rc == SQLITE_ROW) {
      id = cached->second.id;
      cached->second.confirmedInBatch = batch;
      found = names.size();
      return RegError::Success;
    }
    if (rc != SQLITE_DONE) return StatusFromSqlite(rc);
    pathCache_.erase(cached);
  }

  // Each join is planned the first time a path of its depth is looked up: most runs use
  // one or two of them. One that cannot be prepared leaves the walk, name by name.
  SqliteStatement& findPath = statements_.findPath[names.size()];
  if (!findPath) {
    sqlite3_stmt* raw = nullptr;
    const std::string sql = FindPathSql(names.size());
    sqlite3_prepare_v3(db_.get(), sql.c_str(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &raw, nullptr);
    findPath.reset(raw);
    if (!findPath) return Walk(id, names, found);
  }
  foldedPath_.resize(names.size());
  StatementRun run(findPath);
  run.Bind(1, id);
  for (std::size_t i = 0; i < names.size(); ++i) {
    FoldName(names[i], foldedPath_[i]);
    run.BindBlob(static_cast<int>(i + 2), foldedPath_[i]);
  }
  const int rc = run.Step();
  if (rc == SQLITE_ROW) {
    id = run.Int(0);
    found = names.size();
    if (pathCache_.size() >= kPathCacheSize) pathCache_.clear();
    pathCache_.emplace(pathKey_, CachedPath{id, batch});
    return RegError::Success;
  }
  if (rc != SQLITE_DONE) return StatusFromSqlite(rc);
  return Walk(id, names, found);  // to learn how far the path exists
}

RegStatus SqliteHive::WriteAllowed() {
  if (batchDepth_ == 0) return RegError::Success;
  // SQLite rolls a transaction back by itself after some failures (a full disk, say); what
  // follows must not be committed piecemeal.
  if (batchStatus_ == RegError::Success && sqlite3_get_autocommit(db_.get())) batchStatus_ = RegError::IoFailed;
  return batchStatus_;
}

void SqliteHive::BeginReading() {
  if (readingDepth_++ > 0 || batchDepth_ > 0) return;
  readingBegan_ = Execute(db_.get(), "BEGIN") == SQLITE_OK;
}

void SqliteHive::EndReading() {
  if (readingDepth_ == 0 || --readingDepth_ > 0) return;
  if (readingBegan_ && batchDepth_ == 0 && !sqlite3_get_autocommit(db_.get())) Execute(db_.get(), "COMMIT");
  readingBegan_ = false;
}

void SqliteHive::BeginBatch() {
  if (batchDepth_++ > 0) return;
  // A write batch cannot start inside the read transaction; the reads so far stay valid.
  if (readingBegan_ && !sqlite3_get_autocommit(db_.get())) Execute(db_.get(), "COMMIT");
  readingBegan_ = false;
  batchAbandoned_ = false;
  batchStatus_ = StatusFromSqlite(Execute(db_.get(), "BEGIN IMMEDIATE"));
  batchBegan_ = batchStatus_ == RegError::Success;
  if (batchBegan_) ++batchSerial_;
  batchLastKeyId_ = INT64_MAX;
  if (!batchBegan_) return;
  StatementRun run(statements_.lastKeyId);
  const int rc = run.Step();
  if (rc == SQLITE_ROW) batchLastKeyId_ = run.Int(0);
  if (rc != SQLITE_ROW) batchStatus_ = rc == SQLITE_DONE ? RegError::BadDatabase : StatusFromSqlite(rc);
}

void SqliteHive::CommitBatch() {
  if (batchDepth_ == 0) return;
  if (--batchDepth_ == 0) EndBatch();
}

void SqliteHive::AbandonBatch() {
  if (batchDepth_ == 0) return;
  batchAbandoned_ = true;
  if (--batchDepth_ == 0) EndBatch();
}

void SqliteHive::EndBatch() {
  sqlite3* const db = db_.get();
  const bool open = !sqlite3_get_autocommit(db);
  const bool kept = open && batchStatus_ == RegError::Success && !batchAbandoned_ && Execute(db, "COMMIT") == SQLITE_OK;
  if (open && !kept) Execute(db, "ROLLBACK");
  if (batchBegan_ && !kept) ForgetKeysAfter(batchLastKeyId_);
  batchStatus_ = RegError::Success;
  batchBegan_ = batchAbandoned_ = false;
}

void SqliteHive::ForgetKeysAfter(std::int64_t lastKeyId) {
  pathCache_.clear();
  for (auto& [handle, key] : handles_) {
    if (key.id > lastKeyId && !IsPredefinedRoot(handle)) key.id = 0;  // no key has id 0: KeyDeleted
  }
}

}  // namespace nv
