#pragma once
// What all objects of the module share, unguarded, as the host's single thread expects:
// the registry context, the language, and the platform's registry that the module was
// started with. The plug-in's share (report writer, host services) is plugin/HostModule.h.
#include <cstdint>
#include <utility>

#include "common/Text.h"
#include "store/Registry.h"

namespace nv {

struct ModuleState {
  RegKey CurrentRoot = 0;
  Text CurrentSubKey;
  std::int32_t LanguageOffset = 0;
  Registry* PlatformRegistry = nullptr;
};

ModuleState& Module();

// The platform's registry; calling a store operation before the platform set it is a bug.
Registry& ModuleRegistry();

// Sets the registry context that the next store operations use.
void SetRegistryContext(std::int32_t root, const Text& subKey);

// Keeps the registry context as it is now and puts it back when it goes, on every way out.
class SavedRegistryContext {
 public:
  SavedRegistryContext() : root_(Module().CurrentRoot), subKey_(Module().CurrentSubKey) {}
  ~SavedRegistryContext() {
    Module().CurrentRoot = root_;
    Module().CurrentSubKey = std::move(subKey_);
  }
  SavedRegistryContext(const SavedRegistryContext&) = delete;
  SavedRegistryContext& operator=(const SavedRegistryContext&) = delete;

 private:
  RegKey root_;
  Text subKey_;
};

}  // namespace nv
