#pragma once
// The registry natively: one SQLite file (WAL, busy timeout) that several processes may use
// at once. Each write lands whole or not at all; a batch is one transaction. Handles are
// numbers of this object, each with the access it was opened with; they stay valid after
// their key is deleted and then answer KeyDeleted, as on Windows. One thread at a time.
#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/posix/SqliteHandles.h"
#include "store/Registry.h"

namespace nv {

class StatementRun;

class SqliteHive final : public Registry {
  struct PrivateTag {
    explicit PrivateTag() = default;
  };

 public:
  // Opens the hive at `path`, creating the file and its folders when missing. Throws
  // std::runtime_error naming the file when it is not a hive or is corrupt (and leaves it as
  // it was).
  static std::unique_ptr<SqliteHive> Open(const std::string& path);
  // The largest value data, in bytes, a hive stores: SQLite's limit on a row, less room for
  // the longest names beside the data.
  static std::uint64_t LargestValueBytes();

  SqliteHive(PrivateTag, SqliteDb db, std::string readOnlyReason);
  SqliteHive(const SqliteHive&) = delete;
  SqliteHive& operator=(const SqliteHive&) = delete;
  ~SqliteHive() override;

  // Empty when the hive may be written; else why not, naming the file. Writes then fail
  // with AccessDenied, as on a key opened without write access.
  const std::string& ReadOnlyReason() const noexcept { return readOnlyReason_; }

  RegStatus OpenKey(RegKey parent, TextView subKey, std::uint32_t access, RegKey& result) override;
  RegStatus CreateKey(RegKey parent, TextView subKey, std::uint32_t access, RegKey& result) override;
  RegStatus CloseKey(RegKey key) override;
  RegStatus QueryValue(RegKey key, TextView name, std::uint32_t* type, std::uint8_t* data,
                       std::uint32_t* size) override;
  bool ReadsValuesInPieces() const override { return true; }
  // A key's values are unique by their folded names, and folding is UpperChar.
  bool ValueNamesUniqueUpperCased() const override { return true; }
  RegStatus ReadValueRanges(RegKey key, TextView name, std::uint32_t size, std::span<const ByteRange> ranges,
                            std::uint8_t* data) override;
  RegStatus SetValueMade(RegKey key, TextView name, std::uint32_t type, std::uint32_t size,
                         const ValueMaker& make) override;
  RegStatus SetValue(RegKey key, TextView name, std::uint32_t type, const std::uint8_t* data,
                     std::uint32_t size) override;
  RegStatus DeleteValue(RegKey key, TextView name) override;
  RegStatus DeleteTree(RegKey key, TextView subKey) override;
  RegStatus EnumKey(RegKey key, std::uint32_t index, Text& name) override;
  RegStatus EnumValue(RegKey key, std::uint32_t index, Text& name, std::uint32_t& type,
                      std::vector<std::uint8_t>& data) override;
  RegStatus VisitValues(RegKey key, std::uint32_t maxDataBytes, const ValueVisitor& visit) override;
  RegStatus ReadValue(RegKey key, TextView name, ValueSink& sink) override;

  // One BEGIN IMMEDIATE transaction; nested calls count. While a batch could not start (the
  // hive stayed busy) or was lost, writes fail with the reason instead of landing alone.
  void BeginBatch() override;
  void CommitBatch() override;
  void AbandonBatch() override;

  // A deferred transaction around a run of reads; inside a write batch it adds nothing.
  void BeginReading() override;
  void EndReading() override;

 private:
  // Where the last enumeration through a handle stopped: asking for the next index then
  // costs one step instead of skipping over every entry before it. Trusted only while
  // neither this connection nor another one has changed the hive since.
  struct EnumCursor {
    std::int64_t index = -1;
    std::int64_t lastId = 0;               // values: row id of the last one
    std::vector<std::uint8_t> lastFolded;  // sub-keys: folded name of the last one
    std::int64_t dataVersion = 0;
    std::int64_t changes = 0;
  };
  struct KeyAccess {
    std::int64_t id = 0;
    std::uint32_t access = 0;
    std::size_t depth = 0;  // names below its root
    EnumCursor keys, values;
  };
  struct Statements {
    SqliteStatement findChild, keyExists, lastKeyId, insertKey, deleteKey, deleteChildren, deleteValues;
    SqliteStatement enumKey, enumKeyAfter, queryValue, setValue, deleteValue, enumValue, enumValueAfter,
        visitValues;
    SqliteStatement valueId, updateValue;
    std::array<SqliteStatement, 9> findPath;  // by depth, from 2
  };

  // A value larger than this is read by incremental blob I/O into the caller's buffer: one
  // copy from the pages, where a column read assembles the whole value in a buffer of its
  // own first.
  static constexpr std::uint32_t kInlineValueBytes = 64 * 1024;
  RegStatus ReadLargeValue(std::int64_t rowId, std::uint8_t* data, std::uint32_t size);
  // Steps `run`, over the value query, to the row of value `name` of `target`.
  RegStatus StepToValue(const KeyAccess& target, TextView name, StatementRun& run);
  // The same from a handle, which must allow reading values.
  RegStatus StepToReadableValue(RegKey key, TextView name, StatementRun& run);
  // Opens the data of value row `rowId` for reading; BadDatabase unless it has `size` bytes.
  RegStatus OpenValueBlob(std::int64_t rowId, std::uint32_t size, SqliteBlob& blob);
  // A large value given to a sink in pieces of this size: small enough to stay in the
  // processor's cache between the read and the sink's copy.
  static constexpr std::uint32_t kSinkPieceBytes = 256 * 1024;
  RegStatus ReadLargeValue(std::int64_t rowId, std::uint32_t size, ValueSink& sink);

  // The handle's key, or null: InvalidHandle.
  KeyAccess* Lookup(RegKey handle);
  // Whether a cursor may go on to `index` without asking where it is again.
  bool Continues(const EnumCursor& cursor, std::uint32_t index) const;
  RegKey NewHandle(std::int64_t id, std::uint32_t access, std::size_t depth);
  // `otherwise`, or KeyDeleted when key `id` no longer exists.
  RegStatus UnlessDeleted(std::int64_t id, RegStatus otherwise);
  // Follows `names` down from key `id` as far as they exist; `found` names were followed.
  // Resolve tries a path remembered from before, then the whole path in one statement (one
  // read transaction, which is most of the cost); Walk goes name by name.
  RegStatus Resolve(std::int64_t& id, std::span<const TextView> names, std::size_t& found);
  RegStatus Walk(std::int64_t& id, std::span<const TextView> names, std::size_t& found);
  // A large value written in place into a blob of zeros, as `make` gives it, so that it is
  // never copied whole.
  RegStatus SetLargeValue(std::int64_t keyId, TextView name, std::uint32_t type, std::uint32_t size,
                          const ValueMaker& make);
  // The key a value may be written to under that name, or why not.
  RegStatus ValueWritable(RegKey key, TextView name, const KeyAccess*& target);
  // Success when a write may start now: outside a batch, or inside one that is still alive.
  RegStatus WriteAllowed();
  void EndBatch();
  // After a rollback: keys made since `lastKeyId` never were, and their ids may come again.
  void ForgetKeysAfter(std::int64_t lastKeyId);

  SqliteDb db_;
  std::string readOnlyReason_;
  Statements statements_;
  std::unordered_map<RegKey, KeyAccess> handles_;  // the roots too, never closed
  RegKey nextHandle_;
  int batchDepth_ = 0;
  int readingDepth_ = 0;
  bool readingBegan_ = false;
  RegStatus batchStatus_ = RegError::Success;
  bool batchBegan_ = false, batchAbandoned_ = false;
  std::int64_t batchLastKeyId_ = 0;  // the newest key when the batch began
  // Paths of two names or more already resolved: folded path -> key id. A key never moves
  // and its id is never given to another key (but see ForgetKeysAfter), so an entry holds
  // as long as its key exists; deleting a key deletes everything under it.
  // Inside a write batch no other process can delete a key, so an entry confirmed once in
  // the batch needs no further look (our own deletions empty the cache).
  struct CachedPath {
    std::int64_t id = 0;
    std::uint64_t confirmedInBatch = 0;  // batchSerial_ then; 0 for none
  };
  std::unordered_map<std::string, CachedPath> pathCache_;
  std::uint64_t batchSerial_ = 0;  // of the batch holding the write lock, counted from 1
  std::string pathKey_;
  // Scratch space reused by every lookup.
  std::vector<TextView> names_;
  std::vector<std::uint8_t> folded_;
  std::vector<std::uint8_t> piece_;
  std::vector<std::vector<std::uint8_t>> foldedPath_;
};

}  // namespace nv
