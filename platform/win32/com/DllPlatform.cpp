#include "platform/win32/com/DllPlatform.h"

#include "platform/win32/Win32Registry.h"
#include "platform/win32/com/ComHostServices.h"
#include "platform/win32/com/ModuleLifetime.h"
#include "platform/win32/dialog/WindowsDialogPresenter.h"
#include "plugin/HostModule.h"
#include "store/ModuleState.h"

namespace nv::com {
namespace {

// Lives as long as the DLL: the core keeps plain pointers to both.
struct WindowsPlatform {
  Win32Registry registry;
  ComHostServices services;
  // The dialog's icon comes from this DLL's resources.
  win::WindowsDialogPresenter dialogs{ThisModule()};
};

WindowsPlatform& Platform() {
  static WindowsPlatform platform;
  return platform;
}

}  // namespace

void AttachCoreToWindows() {
  ModuleState& module = Module();
  if (module.PlatformRegistry == nullptr) module.PlatformRegistry = &Platform().registry;
  HostModuleState& host = HostModule();
  if (host.PlatformServices == nullptr) host.PlatformServices = &Platform().services;
  if (host.PlatformDialogs == nullptr) host.PlatformDialogs = &Platform().dialogs;
}

}  // namespace nv::com
