#pragma once
// Owns one open registry handle and closes it once.
#include <utility>

#include "store/Registry.h"

namespace nv {

class UniqueRegKey {
 public:
  UniqueRegKey() = default;
  UniqueRegKey(Registry& registry, RegKey key) : registry_(&registry), key_(key) {}
  UniqueRegKey(const UniqueRegKey&) = delete;
  UniqueRegKey& operator=(const UniqueRegKey&) = delete;
  UniqueRegKey(UniqueRegKey&& other) noexcept : registry_(other.registry_), key_(std::exchange(other.key_, 0)) {}
  UniqueRegKey& operator=(UniqueRegKey&& other) noexcept {
    if (this != &other) {
      Reset();
      registry_ = other.registry_;
      key_ = std::exchange(other.key_, 0);
    }
    return *this;
  }
  ~UniqueRegKey() { Reset(); }

  RegKey Get() const noexcept { return key_; }
  explicit operator bool() const noexcept { return key_ != 0; }
  void Reset() noexcept {
    if (key_ != 0 && registry_ != nullptr) registry_->CloseKey(key_);
    key_ = 0;
  }

 private:
  Registry* registry_ = nullptr;
  RegKey key_ = 0;
};

// Opens or creates into a UniqueRegKey; the status says whether it worked.
inline RegStatus OpenUniqueKey(Registry& registry, RegKey parent, TextView path, std::uint32_t access,
                               UniqueRegKey& out) {
  RegKey key = 0;
  const RegStatus status = registry.OpenKey(parent, path, access, key);
  out = status == RegError::Success ? UniqueRegKey(registry, key) : UniqueRegKey();
  return status;
}

inline RegStatus CreateUniqueKey(Registry& registry, RegKey parent, TextView path, std::uint32_t access,
                                 UniqueRegKey& out) {
  RegKey key = 0;
  const RegStatus status = registry.CreateKey(parent, path, access, key);
  out = status == RegError::Success ? UniqueRegKey(registry, key) : UniqueRegKey();
  return status;
}

}  // namespace nv
