#include "platform/win32/com/Registration.h"

#include <string>

#include "common/Utf.h"
#include "platform/win32/com/ClassesRoot.h"
#include "platform/win32/com/ComResult.h"
#include "platform/win32/com/ModuleLifetime.h"
#include "platform/win32/com/RegistrationTable.h"

namespace nv::com {
namespace {

#ifdef _WIN64
constexpr ServerArchitecture kArchitecture = ServerArchitecture::X64;
#else
constexpr ServerArchitecture kArchitecture = ServerArchitecture::X86;
#endif

std::wstring Wide(const std::string& utf8) {
  const Text text = FromUtf8(utf8);
  return std::wstring(text.begin(), text.end());
}

std::wstring ValueOf(const RegistryEntry& entry, const std::wstring& serverPath) {
  switch (entry.source) {
    case ValueSource::ServerPath:
      return serverPath;
    case ValueSource::ServerFolder:
      return serverPath.substr(0, serverPath.find_last_of(L'\\') + 1);
    case ValueSource::Text:
      break;
  }
  return Wide(entry.text);
}

HRESULT RegisterAll() {
  const std::wstring serverPath = ThisModulePath();
  RETURN_HR_IF(E_UNEXPECTED, serverPath.empty());
  for (const RegistryEntry& entry : PluginRegistration(kArchitecture).entries) {
    const std::wstring name = entry.name ? Wide(*entry.name) : std::wstring();
    RETURN_IF_FAILED(
        WriteClassesRootText(Wide(entry.key), entry.name ? name.c_str() : nullptr, ValueOf(entry, serverPath)));
  }
  return S_OK;
}

}  // namespace

HRESULT RegisterServer() noexcept {
  try {
    const HRESULT hr = RegisterAll();
    if (FAILED(hr)) UnregisterServer();  // nothing half-written stays behind
    return hr;
  } catch (...) {
    UnregisterServer();
    return E_OUTOFMEMORY;
  }
}

HRESULT UnregisterServer() noexcept {
  try {
    HRESULT result = S_OK;
    for (const std::string& root : PluginRegistration(kArchitecture).roots) {
      const HRESULT hr = RemoveClassesRootTree(Wide(root));
      if (FAILED(hr) && SUCCEEDED(result)) result = hr;
    }
    // The library's key goes once no other version of it is left.
    RegDeleteKeyW(HKEY_CLASSES_ROOT, Wide(std::string("TypeLib\\") + ids::kLibrary).c_str());
    return result;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace nv::com
