#include "plugin/HostModule.h"

#include <cstdlib>

#include "store/ActionsLayout.h"

namespace nv {

HostModuleState& HostModule() {
  static HostModuleState state;
  return state;
}

HostServices& ModuleServices() {
  HostServices* services = HostModule().PlatformServices;
  if (services == nullptr) std::abort();
  return *services;
}

DialogPresenter& ModuleDialogs() {
  DialogPresenter* dialogs = HostModule().PlatformDialogs;
  if (dialogs == nullptr) std::abort();
  return *dialogs;
}

std::unique_ptr<ActionsEditor> PrepareActionsEditor(const Text& taskName, const Text& scenario, bool withMode) {
  std::unique_ptr<ActionsEditor> editor = ModuleServices().CreateActionsEditor();
  ConfigureActionsEditor(*editor, taskName, scenario, withMode);
  return editor;
}

}  // namespace nv
