#pragma once
// The registry as the store sees it: Win32 semantics (predefined roots, keys and value
// names compared without case but kept with their case, typed values as bytes, Win32
// error codes). Text data is UTF-16LE with its terminator, as Windows stores it.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "common/Text.h"

namespace nv {

using RegKey = std::uint64_t;     // opaque handle; predefined roots are their 32-bit values
using RegStatus = std::int32_t;   // a Win32 error code

namespace RegRoot {
constexpr RegKey ClassesRoot = 0x80000000u;
constexpr RegKey CurrentUser = 0x80000001u;
constexpr RegKey LocalMachine = 0x80000002u;
constexpr RegKey Users = 0x80000003u;
constexpr RegKey CurrentConfig = 0x80000005u;
}  // namespace RegRoot

// A root handed over as the host's 32-bit `Regst`.
constexpr RegKey RootFromLong(std::int32_t regst) { return static_cast<std::uint32_t>(regst); }

namespace RegError {
constexpr RegStatus Success = 0;
constexpr RegStatus FileNotFound = 2;
constexpr RegStatus AccessDenied = 5;
constexpr RegStatus InvalidHandle = 6;
constexpr RegStatus InvalidParameter = 87;
constexpr RegStatus BadPathName = 161;
constexpr RegStatus Busy = 170;
constexpr RegStatus MoreData = 234;
constexpr RegStatus NoMoreItems = 259;
constexpr RegStatus NoAccess = 998;
constexpr RegStatus BadDatabase = 1009;
constexpr RegStatus IoFailed = 1016;
constexpr RegStatus KeyDeleted = 1018;
}  // namespace RegError

namespace RegType {
constexpr std::uint32_t None = 0;
constexpr std::uint32_t Sz = 1;
constexpr std::uint32_t ExpandSz = 2;
constexpr std::uint32_t Binary = 3;
constexpr std::uint32_t Dword = 4;
constexpr std::uint32_t DwordBigEndian = 5;
constexpr std::uint32_t Link = 6;
constexpr std::uint32_t MultiSz = 7;
constexpr std::uint32_t Qword = 11;
}  // namespace RegType

namespace RegAccess {
constexpr std::uint32_t QueryValue = 0x0001;
constexpr std::uint32_t SetValue = 0x0002;
constexpr std::uint32_t CreateSubKey = 0x0004;
constexpr std::uint32_t EnumerateSubKeys = 0x0008;
constexpr std::uint32_t Delete = 0x10000;
constexpr std::uint32_t Read = 0x20019;
constexpr std::uint32_t Write = 0x20006;
constexpr std::uint32_t ReadWrite = 0x2001F;
constexpr std::uint32_t AllAccess = 0xF003F;
}  // namespace RegAccess

// Windows' own limits, which the hive keeps too: a name longer than these or a tree deeper
// than this cannot be made.
namespace RegLimit {
constexpr std::size_t KeyNameLength = 255;
constexpr std::size_t ValueNameLength = 16383;
constexpr std::size_t KeyDepth = 512;  // names below the root key
constexpr std::size_t ValueBytes = 0xFFFFFFFF;  // a value's size is a 32-bit count
}  // namespace RegLimit

// One value met by Registry::VisitValues: its data is null when it was not asked for.
struct VisitedValue {
  TextView name;
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  const std::uint8_t* data = nullptr;
};
using ValueVisitor = std::function<void(const VisitedValue&)>;

// Takes one value read by Registry::ReadValue: Begin once with its type and whole size, then
// its bytes in order, in pieces of even size (but perhaps the last).
class ValueSink {
 public:
  virtual void Begin(std::uint32_t type, std::uint32_t size) = 0;
  virtual void Append(const std::uint8_t* data, std::uint32_t size) = 0;
  // A place for the next `size` bytes to be read straight into, or null. The reader then
  // calls Append with that very place.
  virtual std::uint8_t* Room(std::uint32_t size) {
    static_cast<void>(size);
    return nullptr;
  }
  // False once the sink has all it needs: a reader may then stop before the value's end.
  virtual bool WantsMore() const { return true; }

 protected:
  ~ValueSink() = default;
};

// Bytes [begin, end) of a value.
struct ByteRange {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
};

// Whether every range is in order and ends within `size` bytes.
bool RangesWithin(std::span<const ByteRange> ranges, std::uint32_t size) noexcept;

// A value's data in consecutive parts: a text, then its terminator.
using ValueParts = std::span<const std::span<const std::uint8_t>>;

// The parts' total size, or nothing where it passes what a value can hold.
std::optional<std::uint32_t> ValuePartsSize(ValueParts parts) noexcept;

// Takes a value's data a piece at a time, in order.
using ValueBytesSink = std::function<void(std::span<const std::uint8_t> piece)>;
// Makes a value's data, giving it to the sink in pieces as it goes.
using ValueMaker = std::function<void(const ValueBytesSink& sink)>;
// The parts, one piece each; they must outlive the maker.
ValueMaker PartsMaker(ValueParts parts);

class Registry {
 public:
  virtual ~Registry() = default;

  // Sub-key paths are backslash-separated, relative to `parent`; trailing backslashes name
  // the same key; an empty path opens `parent` itself again.
  virtual RegStatus OpenKey(RegKey parent, TextView subKey, std::uint32_t access, RegKey& result) = 0;
  virtual RegStatus CreateKey(RegKey parent, TextView subKey, std::uint32_t access, RegKey& result) = 0;
  virtual RegStatus CloseKey(RegKey key) = 0;

  // As RegQueryValueEx: `data` may be null to learn type and size; a buffer that is too
  // small gives MoreData and the size needed. An empty name is the key's default value.
  virtual RegStatus QueryValue(RegKey key, TextView name, std::uint32_t* type, std::uint8_t* data,
                               std::uint32_t* size) = 0;
  virtual RegStatus SetValue(RegKey key, TextView name, std::uint32_t type, const std::uint8_t* data,
                             std::uint32_t size) = 0;
  // SetValue of the parts joined, made of them by SetValueMade: a store that writes a large
  // value piece by piece takes them as they are, and a text of many MiB is not copied to add
  // its terminator.
  virtual RegStatus SetValueParts(RegKey key, TextView name, std::uint32_t type, ValueParts parts);
  // SetValue of `size` bytes that `make` gives in pieces while it makes them: a store that
  // writes a large value piece by piece never holds it whole. Pieces that do not come to
  // `size` bytes are InvalidParameter; that, or an exception from `make` (which goes
  // through), writes nothing.
  virtual RegStatus SetValueMade(RegKey key, TextView name, std::uint32_t type, std::uint32_t size,
                                 const ValueMaker& make);
  virtual RegStatus DeleteValue(RegKey key, TextView name) = 0;

  // As RegDeleteTree: a non-empty `subKey` goes with everything below it; an empty one
  // clears the values and sub-keys of `key` itself.
  virtual RegStatus DeleteTree(RegKey key, TextView subKey) = 0;

  // Sub-keys in name order, values in the order they were first written.
  virtual RegStatus EnumKey(RegKey key, std::uint32_t index, Text& name) = 0;
  virtual RegStatus EnumValue(RegKey key, std::uint32_t index, Text& name, std::uint32_t& type,
                              std::vector<std::uint8_t>& data) = 0;

  // Every value of `key` in enumeration order, in one pass: the data of those of at most
  // `maxDataBytes` (larger ones come without it). Success, or the error that stopped the
  // pass. This one steps EnumValue; a backend may do it in one query.
  virtual RegStatus VisitValues(RegKey key, std::uint32_t maxDataBytes, const ValueVisitor& visit) {
    Text name;
    std::uint32_t type = 0;
    std::vector<std::uint8_t> data;
    for (std::uint32_t index = 0;; ++index) {
      const RegStatus status = EnumValue(key, index, name, type, data);
      if (status == RegError::NoMoreItems) return RegError::Success;
      if (status != RegError::Success) return status;
      const auto size = static_cast<std::uint32_t>(data.size());
      visit({name, type, size, size <= maxDataBytes ? data.data() : nullptr});
    }
  }

  // One value, as QueryValue gives it, into `sink`: a backend that can reads a value of many
  // MiB in pieces, so that it reaches the caller's storage with no buffer of its size in
  // between and none to zero-fill first. This one reads it whole with QueryValue.
  virtual RegStatus ReadValue(RegKey key, TextView name, ValueSink& sink);
  // Whether ReadValue gives a large value in pieces and ReadValueRanges reads the ranges alone.
  virtual bool ReadsValuesInPieces() const { return false; }
  // Whether no two values of a key have names equal once upper-cased unit by unit
  // (UpperChar): a reader may then take the first name that matches as the only one.
  virtual bool ValueNamesUniqueUpperCased() const { return false; }
  // The bytes of `ranges` of a value of `size` bytes into the same places of `data`, a buffer
  // of that size; the rest of `data` is left as it is. BadDatabase when the value now has
  // another size. This one reads the value whole and copies the ranges.
  virtual RegStatus ReadValueRanges(RegKey key, TextView name, std::uint32_t size, std::span<const ByteRange> ranges,
                                    std::uint8_t* data);

  // A batch of writes lands whole or not at all where the backend can promise it (the
  // hive); elsewhere these do nothing.
  virtual void BeginBatch() {}
  virtual void CommitBatch() {}
  virtual void AbandonBatch() {}

  // A run of reads that sees one state of the registry and costs one lock where the
  // backend takes locks (the hive); nestable; elsewhere these do nothing. No writes inside.
  virtual void BeginReading() {}
  virtual void EndReading() {}
};

// Keeps a run of reads together for the lifetime of the scope.
class ReadingScope {
 public:
  explicit ReadingScope(Registry& registry) : registry_(registry) { registry_.BeginReading(); }
  ~ReadingScope() { registry_.EndReading(); }
  ReadingScope(const ReadingScope&) = delete;
  ReadingScope& operator=(const ReadingScope&) = delete;

 private:
  Registry& registry_;
};

}  // namespace nv
