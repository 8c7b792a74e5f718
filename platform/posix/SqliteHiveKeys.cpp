// Key operations of the hive.
#include <sqlite3.h>

#include "common/Utf.h"
#include "platform/posix/HiveKeyPath.h"
#include "platform/posix/HiveTransaction.h"
#include "platform/posix/SqliteHive.h"
#include "platform/posix/SqliteRun.h"
#include "platform/posix/SqliteStatus.h"

namespace nv {
namespace {

// What clearing a key in place does on Windows: list and delete its values and sub-keys.
constexpr std::uint32_t kClearAccess = RegAccess::QueryValue | RegAccess::EnumerateSubKeys | RegAccess::SetValue;

}  // namespace

RegStatus SqliteHive::OpenKey(RegKey parent, TextView subKey, std::uint32_t access, RegKey& result) {
  result = 0;
  const KeyAccess* from = Lookup(parent);
  if (from == nullptr) return RegError::InvalidHandle;
  const std::int64_t fromId = from->id;
  RegStatus status = SplitKeyPath(subKey, names_);
  if (status != RegError::Success) return status;
  std::int64_t id = fromId;
  std::size_t found = 0;
  if ((status = Resolve(id, names_, found)) != RegError::Success) return status;
  if (found < names_.size()) return found == 0 ? UnlessDeleted(fromId, RegError::FileNotFound) : RegError::FileNotFound;
  if (names_.empty() && (status = UnlessDeleted(id, RegError::Success)) != RegError::Success) return status;
  result = NewHandle(id, access, from->depth + names_.size());
  return RegError::Success;
}

RegStatus SqliteHive::CreateKey(RegKey parent, TextView subKey, std::uint32_t access, RegKey& result) {
  result = 0;
  const KeyAccess* from = Lookup(parent);
  if (from == nullptr) return RegError::InvalidHandle;
  const std::int64_t fromId = from->id;
  const bool mayCreate = (from->access & RegAccess::CreateSubKey) != 0;
  const std::size_t depth = from->depth;
  RegStatus status = SplitKeyPath(subKey, names_);
  if (status != RegError::Success) return status;
  std::int64_t id = fromId;
  std::size_t found = 0;
  if ((status = Resolve(id, names_, found)) != RegError::Success) return status;
  if (found == names_.size()) {
    if (names_.empty() && (status = UnlessDeleted(id, RegError::Success)) != RegError::Success) return status;
    result = NewHandle(id, access, depth + names_.size());
    return RegError::Success;
  }

  if (!mayCreate) return RegError::AccessDenied;
  // Windows' limits: what is made here can also be listed, exported and deleted.
  if (depth + names_.size() > RegLimit::KeyDepth) return RegError::InvalidParameter;
  for (std::size_t i = found; i < names_.size(); ++i) {
    if (HasLineBreak(names_[i])) return RegError::InvalidParameter;
  }
  if ((status = WriteAllowed()) != RegError::Success) return status;
  HiveTransaction transaction(db_.get(), batchDepth_ > 0);
  int rc = transaction.Begin();
  if (rc != SQLITE_OK) return StatusFromSqlite(rc);
  // Again under the write lock: another process may have created part of the path meanwhile.
  id = fromId;
  if ((status = Walk(id, names_, found)) != RegError::Success) return status;
  for (std::size_t i = found; i < names_.size(); ++i) {
    FoldName(names_[i], folded_);
    StatementRun run(statements_.insertKey);
    rc = run.Bind(1, id).BindText(2, ToUtf8(names_[i])).BindBlob(3, folded_).Step();
    if (rc == SQLITE_CONSTRAINT_FOREIGNKEY) return RegError::KeyDeleted;
    if (rc != SQLITE_DONE) return StatusFromSqlite(rc);
    id = sqlite3_last_insert_rowid(db_.get());
  }
  if ((rc = transaction.Commit()) != SQLITE_OK) return StatusFromSqlite(rc);
  result = NewHandle(id, access, depth + names_.size());
  return RegError::Success;
}

RegStatus SqliteHive::CloseKey(RegKey key) {
  if (IsPredefinedRoot(key)) return RegError::Success;
  return handles_.erase(key) == 1 ? RegError::Success : RegError::InvalidHandle;
}

RegStatus SqliteHive::DeleteTree(RegKey key, TextView subKey) {
  const KeyAccess* target = Lookup(key);
  if (target == nullptr) return RegError::InvalidHandle;
  const std::int64_t targetId = target->id;
  RegStatus status = SplitKeyPath(subKey, names_);
  if (status != RegError::Success) return status;

  if (names_.empty()) {
    if ((target->access & kClearAccess) != kClearAccess) return RegError::AccessDenied;
    if ((status = WriteAllowed()) != RegError::Success) return status;
    HiveTransaction transaction(db_.get(), batchDepth_ > 0);
    int rc = transaction.Begin();
    if (rc != SQLITE_OK) return StatusFromSqlite(rc);
    if ((status = UnlessDeleted(targetId, RegError::Success)) != RegError::Success) return status;
    pathCache_.clear();
    for (const SqliteStatement* statement : {&statements_.deleteChildren, &statements_.deleteValues}) {
      StatementRun run(*statement);
      if ((rc = run.Bind(1, targetId).Step()) != SQLITE_DONE) return StatusFromSqlite(rc);
    }
    return StatusFromSqlite(transaction.Commit());
  }

  std::int64_t id = targetId;
  std::size_t found = 0;
  if ((status = Resolve(id, names_, found)) != RegError::Success) return status;
  if (found < names_.size())
    return found == 0 ? UnlessDeleted(targetId, RegError::FileNotFound) : RegError::FileNotFound;
  if ((status = WriteAllowed()) != RegError::Success) return status;
  pathCache_.clear();  // whatever lay under the key goes with it
  // One statement: the foreign keys take every sub-key and value with it, atomically.
  StatementRun run(statements_.deleteKey);
  const int rc = run.Bind(1, id).Step();
  if (rc != SQLITE_DONE) return StatusFromSqlite(rc);
  return sqlite3_changes(db_.get()) == 0 ? RegError::FileNotFound : RegError::Success;
}

RegStatus SqliteHive::EnumKey(RegKey key, std::uint32_t index, Text& name) {
  KeyAccess* target = Lookup(key);
  if (target == nullptr) return RegError::InvalidHandle;
  if ((target->access & RegAccess::EnumerateSubKeys) == 0) return RegError::AccessDenied;
  EnumCursor& cursor = target->keys;
  if (Continues(cursor, index)) {
    StatementRun run(statements_.enumKeyAfter);
    const int rc = run.Bind(1, target->id).BindBlob(2, cursor.lastFolded).Step();
    if (rc == SQLITE_ROW && run.Int(2) == cursor.dataVersion) {
      name = run.TextColumn(0);
      const auto folded = run.Blob(1);
      cursor.lastFolded.assign(folded.begin(), folded.end());
      cursor.index = index;
      return RegError::Success;
    }
    if (rc != SQLITE_ROW && rc != SQLITE_DONE) return StatusFromSqlite(rc);
  }
  StatementRun run(statements_.enumKey);
  const int rc = run.Bind(1, target->id).Bind(2, index).Step();
  if (rc != SQLITE_ROW) {
    cursor.index = -1;
    return rc == SQLITE_DONE ? UnlessDeleted(target->id, RegError::NoMoreItems) : StatusFromSqlite(rc);
  }
  name = run.TextColumn(0);
  const auto folded = run.Blob(1);
  cursor = {index, 0, {folded.begin(), folded.end()}, run.Int(2), sqlite3_total_changes64(db_.get())};
  return RegError::Success;
}

}  // namespace nv
