#include "store/KeyValueSnapshot.h"

#include "common/CaseMapping.h"
#include "store/RegistryOperations.h"

namespace nv {
namespace {

bool SameName(TextView folded, TextView name) noexcept {
  if (folded.size() != name.size()) return false;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (UpperChar(name[i]) != folded[i]) return false;
  }
  return true;
}

}  // namespace

KeyValueSnapshot::KeyValueSnapshot(Registry& registry, RegKey key) : registry_(registry), key_(key) {
  const RegStatus status = registry.VisitValues(key, kTextBufferBytes, [&](const VisitedValue& value) {
    Entry entry{UpperCase(value.name), ValueAsRead(value.type, value.size, value.data)};
    const auto [found, added] = index_.try_emplace(entry.folded, entries_.size());
    if (!added) {
      entries_[found->second].ambiguous = true;
      entry.ambiguous = true;
    }
    entries_.push_back(std::move(entry));
  });
  // A pass cut short leaves nothing trusted: every read then asks the registry.
  if (status != RegError::Success) {
    entries_.clear();
    index_.clear();
  }
}

Variant KeyValueSnapshot::Read(TextView name) {
  if (next_ < entries_.size() && !entries_[next_].ambiguous && SameName(entries_[next_].folded, name)) {
    return entries_[next_++].value;
  }
  const auto found = index_.find(UpperCase(name));
  if (found != index_.end() && !entries_[found->second].ambiguous) {
    next_ = found->second + 1;
    return entries_[found->second].value;
  }
  return ReadRegistryValueFromKey(registry_, key_, name);
}

}  // namespace nv
