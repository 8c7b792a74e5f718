#pragma once
// What all plug-in objects of the module share besides the registry context and the
// language (store/ModuleState.h): the one report writer instance, and the platform's host
// services and dialogs that the module was started with. Unguarded, as the host's single
// thread expects.
#include <memory>

#include "plugin/HostServices.h"
#include "plugin/TaskDialog.h"

namespace nv {

struct HostModuleState {
  std::shared_ptr<ReportWriter> ReportWriterInstance;
  HostServices* PlatformServices = nullptr;
  // Only platforms that can show the task dialog set it.
  DialogPresenter* PlatformDialogs = nullptr;
};

HostModuleState& HostModule();

// The platform's services; using them before the platform set them is a bug.
HostServices& ModuleServices();
// The platform's dialogs; a platform without them cannot configure a task.
DialogPresenter& ModuleDialogs();

// A new actions editor prepared for one use, as every caller does it before its call: the
// module's root and sub-key, mode 0 when asked, task, scenario.
std::unique_ptr<ActionsEditor> PrepareActionsEditor(const Text& taskName, const Text& scenario, bool withMode);

}  // namespace nv
