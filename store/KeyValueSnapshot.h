#pragma once
// Every value of one open key, read in one enumeration and kept as the store's reader gives
// it: a loader that asks for many values pays one pass instead of one query each.
#include <unordered_map>

#include "common/Text.h"
#include "common/Variant.h"
#include "store/Registry.h"

namespace nv {

class KeyValueSnapshot {
 public:
  // Enumerates `key` (held open by the caller, inside its reading scope).
  KeyValueSnapshot(Registry& registry, RegKey key);

  // ReadRegistryValueFromKey's answer for `name`. A name the enumeration did not give, or
  // gave twice once upper-cased, is asked of the registry itself, whose own comparison of
  // names then decides.
  Variant Read(TextView name) const;

 private:
  Registry& registry_;
  RegKey key_;
  std::unordered_map<Text, Variant> values_;  // by upper-cased name
};

}  // namespace nv
