// Value operations of the hive.
#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "common/Utf.h"
#include "platform/posix/HiveKeyPath.h"
#include "platform/posix/HiveTransaction.h"
#include "platform/posix/SqliteHive.h"
#include "platform/posix/SqliteRun.h"
#include "platform/posix/SqliteStatus.h"

namespace nv {
namespace {

// From this size on a value is written in pieces: SQLite would otherwise build a copy of it.
constexpr std::uint32_t kLargeValue = 1 << 20;
constexpr std::uint32_t kBlobPiece = 1 << 20;

}  // namespace

RegStatus SqliteHive::QueryValue(RegKey key, TextView name, std::uint32_t* type, std::uint8_t* data,
                                 std::uint32_t* size) {
  const KeyAccess* target = Lookup(key);
  if (target == nullptr) return RegError::InvalidHandle;
  if (data != nullptr && size == nullptr) return RegError::InvalidParameter;
  if ((target->access & RegAccess::QueryValue) == 0) return RegError::AccessDenied;
  // The statement gives a small value's bytes; a large one is left in its pages and read
  // below straight into the caller's buffer, inside the statement's read transaction.
  StatementRun run(statements_.queryValue);
  if (const RegStatus status = StepToValue(*target, name, run); status != RegError::Success) return status;
  if (type != nullptr) *type = static_cast<std::uint32_t>(run.Int(0));
  const auto needed = static_cast<std::uint32_t>(run.Int(1));
  if (data != nullptr && *size < needed) {
    *size = needed;
    return RegError::MoreData;
  }
  if (size != nullptr) *size = needed;
  if (data == nullptr || needed == 0) return RegError::Success;
  if (needed <= kInlineValueBytes) {
    std::memcpy(data, run.Blob(3).data(), needed);
    return RegError::Success;
  }
  return ReadLargeValue(run.Int(2), data, needed);
}

RegStatus SqliteHive::StepToValue(const KeyAccess& target, TextView name, StatementRun& run) {
  FoldName(name, folded_);
  const int rc = run.Bind(1, target.id).BindBlob(2, folded_).Step();
  if (rc == SQLITE_DONE) return UnlessDeleted(target.id, RegError::FileNotFound);
  return rc == SQLITE_ROW ? RegError::Success : StatusFromSqlite(rc);
}

RegStatus SqliteHive::StepToReadableValue(RegKey key, TextView name, StatementRun& run) {
  const KeyAccess* target = Lookup(key);
  if (target == nullptr) return RegError::InvalidHandle;
  if ((target->access & RegAccess::QueryValue) == 0) return RegError::AccessDenied;
  return StepToValue(*target, name, run);
}

RegStatus SqliteHive::OpenValueBlob(std::int64_t rowId, std::uint32_t size, SqliteBlob& blob) {
  sqlite3_blob* raw = nullptr;
  const int rc = sqlite3_blob_open(db_.get(), "main", "vals", "data", rowId, 0, &raw);
  blob.reset(raw);
  if (rc != SQLITE_OK) return StatusFromSqlite(rc);
  return static_cast<std::uint32_t>(sqlite3_blob_bytes(blob.get())) == size ? RegError::Success
                                                                           : RegError::BadDatabase;
}

RegStatus SqliteHive::ReadLargeValue(std::int64_t rowId, std::uint8_t* data, std::uint32_t size) {
  SqliteBlob blob;
  if (const RegStatus status = OpenValueBlob(rowId, size, blob); status != RegError::Success) return status;
  return StatusFromSqlite(sqlite3_blob_read(blob.get(), data, static_cast<int>(size), 0));
}

RegStatus SqliteHive::ReadValue(RegKey key, TextView name, ValueSink& sink) {
  StatementRun run(statements_.queryValue);
  if (const RegStatus status = StepToReadableValue(key, name, run); status != RegError::Success) return status;
  const auto size = static_cast<std::uint32_t>(run.Int(1));
  sink.Begin(static_cast<std::uint32_t>(run.Int(0)), size);
  if (size <= kInlineValueBytes) {
    sink.Append(run.Blob(3).data(), size);
    return RegError::Success;
  }
  return ReadLargeValue(run.Int(2), size, sink);
}

RegStatus SqliteHive::ReadLargeValue(std::int64_t rowId, std::uint32_t size, ValueSink& sink) {
  SqliteBlob blob;
  if (const RegStatus status = OpenValueBlob(rowId, size, blob); status != RegError::Success) return status;
  for (std::uint32_t at = 0; at < size && sink.WantsMore(); at += kSinkPieceBytes) {
    const std::uint32_t piece = std::min(kSinkPieceBytes, size - at);
    std::uint8_t* into = sink.Room(piece);
    if (into == nullptr) {  // made only for a sink with no room of its own: it would be zeroed for nothing
      if (piece_.size() < piece) piece_.resize(std::min(kSinkPieceBytes, size));
      into = piece_.data();
    }
    const int rc = sqlite3_blob_read(blob.get(), into, static_cast<int>(piece), static_cast<int>(at));
    if (rc != SQLITE_OK) return StatusFromSqlite(rc);
    sink.Append(into, piece);
  }
  return RegError::Success;
}

RegStatus SqliteHive::ReadValueRanges(RegKey key, TextView name, std::uint32_t size, std::span<const ByteRange> ranges,
                                      std::uint8_t* data) {
  if (!RangesWithin(ranges, size)) return RegError::InvalidParameter;
  StatementRun run(statements_.queryValue);
  if (const RegStatus status = StepToReadableValue(key, name, run); status != RegError::Success) return status;
  if (static_cast<std::uint32_t>(run.Int(1)) != size) return RegError::BadDatabase;
  if (size <= kInlineValueBytes) {
    const std::span<const std::uint8_t> bytes = run.Blob(3);
    for (const ByteRange range : ranges) std::memcpy(data + range.begin, bytes.data() + range.begin, range.end - range.begin);
    return RegError::Success;
  }
  // One blob for every range: each read is a walk along the value's pages, in place.
  SqliteBlob blob;
  if (const RegStatus status = OpenValueBlob(run.Int(2), size, blob); status != RegError::Success) return status;
  for (const ByteRange range : ranges) {
    if (range.end == range.begin) continue;
    const int rc = sqlite3_blob_read(blob.get(), data + range.begin, static_cast<int>(range.end - range.begin),
                                     static_cast<int>(range.begin));
    if (rc != SQLITE_OK) return StatusFromSqlite(rc);
  }
  return RegError::Success;
}

RegStatus SqliteHive::ValueWritable(RegKey key, TextView name, const KeyAccess*& target) {
  target = Lookup(key);
  if (target == nullptr) return RegError::InvalidHandle;
  if ((target->access & RegAccess::SetValue) == 0) return RegError::AccessDenied;
  if (name.size() > RegLimit::ValueNameLength || HasLineBreak(name)) return RegError::InvalidParameter;
  return WriteAllowed();
}

RegStatus SqliteHive::SetValueMade(RegKey key, TextView name, std::uint32_t type, std::uint32_t size,
                                   const ValueMaker& make) {
  if (size < kLargeValue) return Registry::SetValueMade(key, name, type, size, make);
  const KeyAccess* target = nullptr;
  if (const RegStatus status = ValueWritable(key, name, target); status != RegError::Success) return status;
  return SetLargeValue(target->id, name, type, size, make);
}

RegStatus SqliteHive::SetValue(RegKey key, TextView name, std::uint32_t type, const std::uint8_t* data,
                               std::uint32_t size) {
  if (data == nullptr && size > 0) return Lookup(key) == nullptr ? RegError::InvalidHandle : RegError::NoAccess;
  const KeyAccess* target = nullptr;
  if (const RegStatus status = ValueWritable(key, name, target); status != RegError::Success) return status;
  if (size >= kLargeValue) {
    const std::span<const std::uint8_t> whole(data, size);
    return SetLargeValue(target->id, name, type, size, PartsMaker(ValueParts(&whole, 1)));
  }
  FoldName(name, folded_);
  {  // Most writes replace a value that exists (a scenario's variables, run after run): a
     // plain update costs less than the insert's conflict handling, which is left for the rest.
    StatementRun update(statements_.updateValue);
    const int rc = update.Bind(1, target->id).BindBlob(2, folded_).Bind(3, type).BindBlob(4, {data, size}).Step();
    if (rc != SQLITE_DONE) return StatusFromSqlite(rc);
    if (sqlite3_changes(db_.get()) > 0) return RegError::Success;
  }
  // One statement, so the write is atomic without a transaction of its own; a deleted key
  // shows up as its foreign key failing.
  StatementRun run(statements_.setValue);
  const int rc = run.Bind(1, target->id)
                     .BindText(2, ToUtf8(name))
                     .BindBlob(3, folded_)
                     .Bind(4, type)
                     .BindBlob(5, {data, size})
                     .Step();
  if (rc == SQLITE_CONSTRAINT_FOREIGNKEY) return RegError::KeyDeleted;
  return StatusFromSqlite(rc);
}

std::uint64_t SqliteHive::LargestValueBytes() {
  // The limit is the library's, the same for every connection: an empty one in memory tells it.
  SqliteDb db;
  const int rc = OpenSqlite(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_MEMORY, db);
  constexpr std::uint64_t kRowRoom = 128 * 1024;  // a 16,383-unit name twice (as UTF-8 and folded), and headers
  const auto limit = rc == SQLITE_OK ? static_cast<std::uint64_t>(sqlite3_limit(db.get(), SQLITE_LIMIT_LENGTH, -1)) : 0;
  return limit > kRowRoom ? limit - kRowRoom : 0;
}

RegStatus SqliteHive::SetLargeValue(std::int64_t keyId, TextView name, std::uint32_t type, std::uint32_t size,
                                     const ValueMaker& make) {
  HiveTransaction transaction(db_.get(), batchDepth_ > 0);  // rolled back unless committed
  int rc = transaction.Begin();
  if (rc != SQLITE_OK) return StatusFromSqlite(rc);
  FoldName(name, folded_);
  {
    StatementRun run(statements_.setValue);
    rc = run.Bind(1, keyId).BindText(2, ToUtf8(name)).BindBlob(3, folded_).Bind(4, type).BindZeroBlob(5, size).Step();
    if (rc == SQLITE_CONSTRAINT_FOREIGNKEY) return RegError::KeyDeleted;
    if (rc != SQLITE_DONE) return StatusFromSqlite(rc);
  }
  std::int64_t id = 0;
  {
    StatementRun run(statements_.valueId);
    rc = run.Bind(1, keyId).BindBlob(2, folded_).Step();
    if (rc != SQLITE_ROW) return rc == SQLITE_DONE ? RegError::BadDatabase : StatusFromSqlite(rc);
    id = run.Int(0);
  }
  {  // closed before the commit, which it would otherwise hold up
    sqlite3_blob* raw = nullptr;
    rc = sqlite3_blob_open(db_.get(), "main", "vals", "data", id, 1, &raw);
    const SqliteBlob blob(raw);
    if (rc != SQLITE_OK) return StatusFromSqlite(rc);
    std::uint32_t at = 0;  // where the next piece goes in the value
    bool over = false;     // pieces past the size
    make([&](std::span<const std::uint8_t> part) {
      over = over || part.size() > size - at;
      for (std::size_t from = 0; !over && rc == SQLITE_OK && from < part.size(); from += kBlobPiece) {
        const auto piece = static_cast<std::uint32_t>(std::min<std::size_t>(kBlobPiece, part.size() - from));
        rc = sqlite3_blob_write(blob.get(), part.data() + from, static_cast<int>(piece), static_cast<int>(at));
        at += piece;
      }
    });
    if (rc != SQLITE_OK) return StatusFromSqlite(rc);
    if (over || at != size) return RegError::InvalidParameter;
  }
  return StatusFromSqlite(transaction.Commit());
}

RegStatus SqliteHive::DeleteValue(RegKey key, TextView name) {
  const KeyAccess* target = Lookup(key);
  if (target == nullptr) return RegError::InvalidHandle;
  if ((target->access & RegAccess::SetValue) == 0) return RegError::AccessDenied;
  if (const RegStatus status = WriteAllowed(); status != RegError::Success) return status;
  FoldName(name, folded_);
  StatementRun run(statements_.deleteValue);
  const int rc = run.Bind(1, target->id).BindBlob(2, folded_).Step();
  if (rc != SQLITE_DONE) return StatusFromSqlite(rc);
  return sqlite3_changes(db_.get()) == 0 ? UnlessDeleted(target->id, RegError::FileNotFound) : RegError::Success;
}

RegStatus SqliteHive::EnumValue(RegKey key, std::uint32_t index, Text& name, std::uint32_t& type,
                                std::vector<std::uint8_t>& data) {
  KeyAccess* target = Lookup(key);
  if (target == nullptr) return RegError::InvalidHandle;
  if ((target->access & RegAccess::QueryValue) == 0) return RegError::AccessDenied;
  // Inside the statement's read transaction, so that a large value is the row's.
  const auto take = [&](const StatementRun& run) {
    name = run.TextColumn(0);
    type = static_cast<std::uint32_t>(run.Int(1));
    const auto size = static_cast<std::uint32_t>(run.Int(5));
    if (size <= kInlineValueBytes) {
      const auto bytes = run.Blob(2);
      data.assign(bytes.begin(), bytes.end());
      return RegError::Success;
    }
    data.resize(size);
    return ReadLargeValue(run.Int(3), data.data(), size);
  };
  EnumCursor& cursor = target->values;
  if (Continues(cursor, index)) {
    StatementRun run(statements_.enumValueAfter);
    const int rc = run.Bind(1, target->id).Bind(2, cursor.lastId).Step();
    if (rc == SQLITE_ROW && run.Int(4) == cursor.dataVersion) {
      if (const RegStatus status = take(run); status != RegError::Success) return status;
      cursor.lastId = run.Int(3);
      cursor.index = index;
      return RegError::Success;
    }
    if (rc != SQLITE_ROW && rc != SQLITE_DONE) return StatusFromSqlite(rc);
  }
  StatementRun run(statements_.enumValue);
  const int rc = run.Bind(1, target->id).Bind(2, index).Step();
  if (rc != SQLITE_ROW) {
    cursor.index = -1;
    return rc == SQLITE_DONE ? UnlessDeleted(target->id, RegError::NoMoreItems) : StatusFromSqlite(rc);
  }
  if (const RegStatus status = take(run); status != RegError::Success) {
    cursor.index = -1;
    return status;
  }
  cursor = {index, run.Int(3), {}, run.Int(4), sqlite3_total_changes64(db_.get())};
  return RegError::Success;
}

// One statement steps through the key's values: a reader of many values pays one query.
RegStatus SqliteHive::VisitValues(RegKey key, std::uint32_t maxDataBytes, const ValueVisitor& visit) {
  const KeyAccess* target = Lookup(key);
  if (target == nullptr) return RegError::InvalidHandle;
  if ((target->access & RegAccess::QueryValue) == 0) return RegError::AccessDenied;
  StatementRun run(statements_.visitValues);
  run.Bind(1, target->id).Bind(2, maxDataBytes);
  int rc;
  bool any = false;
  Text name;
  while ((rc = run.Step()) == SQLITE_ROW) {
    any = true;
    run.TextColumnInto(0, name);
    const auto size = static_cast<std::uint32_t>(run.Int(2));
    const std::span<const std::uint8_t> data = run.Blob(3);
    visit({name, static_cast<std::uint32_t>(run.Int(1)), size, size <= maxDataBytes ? data.data() : nullptr});
  }
  if (rc != SQLITE_DONE) return StatusFromSqlite(rc);
  return any ? RegError::Success : UnlessDeleted(target->id, RegError::Success);
}

}  // namespace nv
