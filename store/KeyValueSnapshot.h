#pragma once
// Every value of one open key, read in one enumeration and kept as the store's reader gives
// it: a loader that asks for many values pays one pass instead of one query each.
#include <cstddef>
#include <unordered_map>
#include <vector>

#include "common/Text.h"
#include "common/Variant.h"
#include "store/Registry.h"

namespace nv {

class KeyValueSnapshot {
 public:
  // Enumerates `key` (held open by the caller, inside its reading scope).
  KeyValueSnapshot(Registry& registry, RegKey key);
  KeyValueSnapshot(const KeyValueSnapshot&) = delete;  // its index views its own names
  KeyValueSnapshot& operator=(const KeyValueSnapshot&) = delete;

  // ReadRegistryValueFromKey's answer for `name`. A name the enumeration did not give, or
  // gave twice once upper-cased, is asked of the registry itself, whose own comparison of
  // names then decides.
  Variant Read(TextView name);

 private:
  struct Entry {
    std::size_t at = 0;  // of the name, in names_ and in folded_
    std::size_t size = 0;
    Variant value;
    bool ambiguous = false;
  };
  TextView Name(const Entry& entry) const noexcept { return TextView(names_).substr(entry.at, entry.size); }
  TextView Folded(const Entry& entry) const noexcept { return TextView(folded_).substr(entry.at, entry.size); }
  // The entry names `name`, most often as written, else once both are upper-cased.
  bool Names(const Entry& entry, TextView name) const noexcept;
  // Folded name -> entry for every entry, each name given twice marked ambiguous.
  void BuildIndex();
  // Where the index is not built yet: the entry that names `name`, found by a walk.
  const Entry* Walk(TextView name);
  // The one entry that names `name`, by a walk while walks are left, else by the index;
  // null when there is none, or more than one.
  const Entry* Find(TextView name);

  Registry& registry_;
  RegKey key_;
  std::vector<Entry> entries_;  // in enumeration order
  Text names_;                  // every name, one after the other: one allocation for all
  Text folded_;                 // the same upper-cased
  // Folded name -> entry, viewing folded_. Where the registry keeps names unique once
  // upper-cased, it is built only after a few names were not where the order put them: a
  // load then walks past the few absent names instead of indexing thousands of present ones.
  std::unordered_map<TextView, std::size_t> index_;
  bool indexed_ = false;
  std::size_t walksLeft_ = 0;
  Text asked_;  // the name looked up, upper-cased
  // A task is read in the order it was written, which is the enumeration's: the next name
  // asked for is most often the entry after the last one found, and costs no look-up.
  std::size_t next_ = 0;
};

}  // namespace nv
