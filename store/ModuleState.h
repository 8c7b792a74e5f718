#pragma once
// What all objects of the module share, unguarded, as the host's single thread expects:
// the registry context, the language, and the platform's registry that the module was
// started with. The plug-in's share (report writer, host services) is plugin/HostModule.h.
#include <cstdint>
#include <cstdlib>

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

}  // namespace nv
