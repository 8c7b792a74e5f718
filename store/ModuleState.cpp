#include "store/ModuleState.h"

#include <cstdlib>

namespace nv {

ModuleState& Module() {
  static ModuleState state;
  return state;
}

Registry& ModuleRegistry() {
  Registry* registry = Module().PlatformRegistry;
  if (registry == nullptr) std::abort();
  return *registry;
}

void SetRegistryContext(std::int32_t root, const Text& subKey) {
  Module().CurrentRoot = RootFromLong(root);
  Module().CurrentSubKey = subKey;
}

}  // namespace nv
