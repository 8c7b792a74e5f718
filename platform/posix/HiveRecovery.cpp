#include "platform/posix/HiveRecovery.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <unordered_map>

#include "common/Utf.h"
#include "platform/posix/HiveCheck.h"
#include "platform/posix/HiveFile.h"
#include "platform/posix/HiveKeyPath.h"
#include "platform/posix/SqliteHive.h"
#include "platform/posix/SqliteRun.h"
#include "store/RegistryKey.h"
#include "store/RegistryStatusText.h"

namespace nv {
namespace {

constexpr std::size_t kLostLines = 50;
constexpr int kReadFailures = 200;

struct KeyRow {
  std::int64_t parent = 0;
  bool hasParent = false;
  Text name;
};

struct Placed {
  RegKey root = 0;
  Text path;  // below the root
};

class LostList {
 public:
  explicit LostList(std::vector<std::string>& lines) : lines_(lines) {}
  ~LostList() {
    if (more_ > 0) lines_.push_back("and " + std::to_string(more_) + " more");
  }
  LostList(const LostList&) = delete;
  LostList& operator=(const LostList&) = delete;
  void Add(std::string line) {
    if (lines_.size() < kLostLines) {
      lines_.push_back(std::move(line));
    } else {
      ++more_;
    }
  }

 private:
  std::vector<std::string>& lines_;
  std::size_t more_ = 0;
};

// Rows in order of their row id, straight from the table (no index is trusted). An unreadable
// stretch is stepped over by seeking further and further past the last row read.
template <typename Take>
void ReadRows(sqlite3* db, const char* sql, const char* what, LostList& lost, Take take) {
  const SqliteStatement statement = Prepare(db, sql);
  std::int64_t after = std::numeric_limits<std::int64_t>::min();
  std::int64_t gap = 1;
  for (int failures = 0;;) {
    sqlite3_reset(statement.get());
    sqlite3_bind_int64(statement.get(), 1, after);
    int rc;
    while ((rc = sqlite3_step(statement.get())) == SQLITE_ROW) {
      after = sqlite3_column_int64(statement.get(), 0);
      gap = 1;
      take(statement.get());
    }
    if (rc == SQLITE_DONE) return;
    if (gap == 1) lost.Add(std::string(what) + " after row " + std::to_string(after) + ": " + sqlite3_errmsg(db));
    if (++failures > kReadFailures || after > std::numeric_limits<std::int64_t>::max() - gap) return;
    after = after == std::numeric_limits<std::int64_t>::min() ? 0 : after + gap;
    gap = gap > std::numeric_limits<std::int64_t>::max() / 4 ? std::numeric_limits<std::int64_t>::max() / 2 : gap * 4;
  }
}

Text TextColumn(sqlite3_stmt* statement, int column) {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  return bytes == nullptr ? Text()
                          : FromUtf8(std::string_view(bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))));
}

// Each key's root and path, found by following parents up at most as far as the registry
// allows; a key whose parents end nowhere or go round is not placed.
std::unordered_map<std::int64_t, Placed> PlaceKeys(const std::unordered_map<std::int64_t, KeyRow>& keys,
                                                   LostList& lost) {
  std::unordered_map<std::int64_t, Placed> placed;
  std::size_t unplaced = 0;
  for (const auto& [id, row] : keys) {
    if (!row.hasParent) continue;
    std::vector<const Text*> names;
    std::int64_t at = id;
    RegKey root = 0;
    while (names.size() <= RegLimit::KeyDepth) {
      const auto found = keys.find(at);
      if (found == keys.end()) break;
      if (!found->second.hasParent) {
        if (IsPredefinedRoot(static_cast<RegKey>(at))) root = static_cast<RegKey>(at);
        break;
      }
      names.push_back(&found->second.name);
      at = found->second.parent;
    }
    if (root == 0) {
      ++unplaced;
      continue;
    }
    Placed& place = placed[id];
    place.root = root;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
      if (!place.path.empty()) place.path.push_back(u'\\');
      place.path += **name;
    }
  }
  if (unplaced > 0)
    lost.Add(std::to_string(unplaced) + " keys (and their values) are under no root key or too deep to place");
  return placed;
}

}  // namespace

std::vector<std::string> CheckHiveFile(const std::string& path, int limit) {
  const SqliteDb db = OpenHiveForInspection(path);
  return HiveProblems(db.get(), limit);
}

RecoveryReport RecoverHive(const std::string& damaged, const std::string& out) {
  std::error_code error;
  if (std::filesystem::exists(out, error))
    throw std::runtime_error(out + " already exists: recover writes a new hive, and never over a file");
  const SqliteDb db = OpenHiveForInspection(damaged);
  RecoveryReport report;
  LostList lost(report.lost);

  std::unordered_map<std::int64_t, KeyRow> keys;
  ReadRows(db.get(), "SELECT id, parent, name FROM keys NOT INDEXED WHERE id > ?1 ORDER BY id", "keys", lost,
           [&](sqlite3_stmt* row) {
             KeyRow& key = keys[sqlite3_column_int64(row, 0)];
             key.hasParent = sqlite3_column_type(row, 1) != SQLITE_NULL;
             key.parent = sqlite3_column_int64(row, 1);
             key.name = TextColumn(row, 2);
           });
  const std::unordered_map<std::int64_t, Placed> placed = PlaceKeys(keys, lost);
  keys.clear();

  const auto hive = SqliteHive::Open(out);
  hive->BeginBatch();
  // Parents first, though CreateKey would make them anyway: each key is named as it was.
  std::vector<const Placed*> order;
  for (const auto& [id, place] : placed) order.push_back(&place);
  std::sort(order.begin(), order.end(), [](const Placed* a, const Placed* b) { return a->path.size() < b->path.size(); });
  for (const Placed* place : order) {
    UniqueRegKey key;
    const RegStatus status = CreateUniqueKey(*hive, place->root, place->path, RegAccess::AllAccess, key);
    if (status == RegError::Success) {
      ++report.keys;
    } else {
      lost.Add("key " + ToUtf8(place->path) + ": " + RegistryStatusText(status));
    }
  }
  std::size_t valuesOfUnplacedKeys = 0;
  ReadRows(db.get(), "SELECT id, key, name, type, data FROM vals NOT INDEXED WHERE id > ?1 ORDER BY id", "values",
           lost, [&](sqlite3_stmt* row) {
             const auto place = placed.find(sqlite3_column_int64(row, 1));
             RegKey root = static_cast<RegKey>(sqlite3_column_int64(row, 1));
             Text path;
             if (place != placed.end()) {
               root = place->second.root;
               path = place->second.path;
             } else if (!IsPredefinedRoot(root)) {
               ++valuesOfUnplacedKeys;
               return;
             }
             const Text name = TextColumn(row, 2);
             const auto* data = static_cast<const std::uint8_t*>(sqlite3_column_blob(row, 4));
             const auto size = static_cast<std::uint32_t>(sqlite3_column_bytes(row, 4));
             UniqueRegKey key;
             RegStatus status = OpenUniqueKey(*hive, root, path, RegAccess::AllAccess, key);
             if (status == RegError::Success)
               status = hive->SetValue(key.Get(), name, static_cast<std::uint32_t>(sqlite3_column_int64(row, 3)), data, size);
             if (status == RegError::Success) {
               ++report.values;
             } else {
               lost.Add("value \"" + ToUtf8(name) + "\" of " + ToUtf8(path) + ": " + RegistryStatusText(status));
             }
           });
  if (valuesOfUnplacedKeys > 0) lost.Add(std::to_string(valuesOfUnplacedKeys) + " values of keys that could not be placed");
  hive->CommitBatch();
  return report;
}

}  // namespace nv
