#pragma once
// What all objects of the module share, unguarded, as the host's single thread expects:
// the registry context, the language, the report writer instance, and the platform's
// registry and host services that the module was started with.
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "common/Text.h"
#include "store/HostServices.h"
#include "store/Registry.h"

namespace nv {

struct ModuleState {
  RegKey CurrentRoot = 0;
  Text CurrentSubKey;
  std::int32_t LanguageOffset = 0;
  std::shared_ptr<ReportWriter> ReportWriterInstance;

  Registry* PlatformRegistry = nullptr;
  HostServices* PlatformServices = nullptr;
  // Only platforms that can show the task dialog set it.
  DialogPresenter* PlatformDialogs = nullptr;
};

ModuleState& Module();

// The platform's registry; calling a store operation before the platform set it is a bug.
Registry& ModuleRegistry();
HostServices& ModuleServices();

// The platform's dialogs; a platform without them cannot configure a task.
inline DialogPresenter& ModuleDialogs() {
  DialogPresenter* dialogs = Module().PlatformDialogs;
  if (dialogs == nullptr) std::abort();
  return *dialogs;
}

// Sets the registry context that the next store operations use.
void SetRegistryContext(std::int32_t root, const Text& subKey);

}  // namespace nv
