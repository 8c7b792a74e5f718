#include "store/KeyValueSnapshot.h"

#include "common/CaseMapping.h"
#include "store/RegistryOperations.h"

namespace nv {

bool KeyValueSnapshot::Names(const Entry& entry, TextView name) const noexcept {
  if (entry.size != name.size()) return false;
  if (Name(entry) == name) return true;
  const TextView folded = Folded(entry);
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (UpperChar(name[i]) != folded[i]) return false;
  }
  return true;
}

KeyValueSnapshot::KeyValueSnapshot(Registry& registry, RegKey key) : registry_(registry), key_(key) {
  const RegStatus status = registry.VisitValues(key, kTextBufferBytes, [&](const VisitedValue& value) {
    const std::size_t at = names_.size();
    names_ += value.name;
    entries_.push_back({at, value.name.size(), ValueAsRead(value.type, value.size, value.data)});
  });
  // A pass cut short leaves nothing trusted: every read then asks the registry.
  if (status != RegError::Success) {
    entries_.clear();
    return;
  }
  // Upper-cased in one pass, and indexed now that folded_ no longer moves.
  folded_ = names_;
  UpperCaseInPlace(folded_);
  index_.reserve(entries_.size());
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const auto [found, added] = index_.try_emplace(Folded(entries_[i]), i);
    if (!added) {
      entries_[found->second].ambiguous = true;
      entries_[i].ambiguous = true;
    }
  }
}

Variant KeyValueSnapshot::Read(TextView name) {
  if (next_ < entries_.size() && !entries_[next_].ambiguous && Names(entries_[next_], name)) {
    return entries_[next_++].value;
  }
  asked_.assign(name);
  UpperCaseInPlace(asked_);
  const auto found = index_.find(asked_);
  if (found != index_.end() && !entries_[found->second].ambiguous) {
    next_ = found->second + 1;
    return entries_[found->second].value;
  }
  return ReadRegistryValueFromKey(registry_, key_, name);
}

}  // namespace nv
