#include "platform/win32/standin/StandInCore.h"

#include <windows.h>

#include <string>

#include "platform/win32/Win32Registry.h"
#include "platform/win32/com/ErrorInfo.h"
#include "platform/win32/standin/ActionDialogs.h"
#include "store/ModuleState.h"
#include "store/Texts.h"

namespace nv::com {

const wchar_t* ModuleErrorSource() noexcept { return L"NVextch host stand-in"; }

}  // namespace nv::com

namespace nv::standin {

Registry& AttachStandInCore() {
  static Win32Registry registry;
  ModuleState& module = Module();
  if (module.PlatformRegistry == nullptr) module.PlatformRegistry = &registry;
  ReadLanguageSetting();
  return *module.PlatformRegistry;
}

std::int32_t CurrentLanguage() { return Module().LanguageOffset; }

void WriteToStandardError(const std::string& utf8Line) {
  const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
  if (error == nullptr || error == INVALID_HANDLE_VALUE) return;
  DWORD written = 0;
  WriteFile(error, utf8Line.data(), static_cast<DWORD>(utf8Line.size()), &written, nullptr);
}

std::unique_ptr<ActionPrompt> MakeActionPrompt(std::int32_t languageOffset) {
  return MakeDialogActionPrompt(languageOffset);
}

}  // namespace nv::standin
