#include "store/KeyValueSnapshot.h"

#include "common/CaseMapping.h"
#include "store/RegistryOperations.h"

namespace nv {
namespace {

// A walk compares sizes first and costs a few microseconds over a thousand-field task; a
// key read out of its order pays for the index once these are spent.
constexpr std::size_t kWalksBeforeIndex = 8;

}  // namespace

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
  folded_ = names_;
  UpperCaseInPlace(folded_);
  // Elsewhere two names may meet once upper-cased: they are found out before any read.
  if (registry.ValueNamesUniqueUpperCased()) {
    walksLeft_ = kWalksBeforeIndex;
  } else {
    BuildIndex();
  }
}

void KeyValueSnapshot::BuildIndex() {
  indexed_ = true;
  index_.reserve(entries_.size());
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const auto [found, added] = index_.try_emplace(Folded(entries_[i]), i);
    if (!added) {
      entries_[found->second].ambiguous = true;
      entries_[i].ambiguous = true;
    }
  }
}

const KeyValueSnapshot::Entry* KeyValueSnapshot::Walk(TextView name) {
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (Names(entries_[i], name)) {
      next_ = i + 1;
      return &entries_[i];
    }
  }
  return nullptr;
}

const KeyValueSnapshot::Entry* KeyValueSnapshot::Find(TextView name) {
  if (!indexed_ && walksLeft_ > 0) {
    --walksLeft_;
    return Walk(name);
  }
  if (!indexed_) BuildIndex();
  asked_.assign(name);
  UpperCaseInPlace(asked_);
  const auto found = index_.find(asked_);
  if (found == index_.end() || entries_[found->second].ambiguous) return nullptr;
  next_ = found->second + 1;
  return &entries_[found->second];
}

Variant KeyValueSnapshot::Read(TextView name) {
  if (next_ < entries_.size() && !entries_[next_].ambiguous && Names(entries_[next_], name)) {
    return entries_[next_++].value;
  }
  if (const Entry* entry = Find(name)) return entry->value;
  return ReadRegistryValueFromKey(registry_, key_, name);
}

}  // namespace nv
