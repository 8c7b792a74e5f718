#include "store/KeyValueSnapshot.h"

#include <unordered_set>

#include "common/CaseMapping.h"
#include "store/RegistryOperations.h"

namespace nv {

KeyValueSnapshot::KeyValueSnapshot(Registry& registry, RegKey key) : registry_(registry), key_(key) {
  std::unordered_set<Text> ambiguous;
  const RegStatus status = registry.VisitValues(key, kTextBufferBytes, [&](const VisitedValue& value) {
    Text folded = UpperCase(value.name);
    if (ambiguous.contains(folded)) return;
    if (values_.contains(folded)) {
      values_.erase(folded);
      ambiguous.insert(std::move(folded));
      return;
    }
    values_.emplace(std::move(folded), ValueAsRead(value.type, value.size, value.data));
  });
  // A pass cut short leaves nothing trusted: every read then asks the registry.
  if (status != RegError::Success) values_.clear();
}

Variant KeyValueSnapshot::Read(TextView name) const {
  const auto found = values_.find(UpperCase(name));
  if (found != values_.end()) return found->second;
  return ReadRegistryValueFromKey(registry_, key_, name);
}

}  // namespace nv
