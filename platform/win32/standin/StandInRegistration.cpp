#include "platform/win32/standin/StandInRegistration.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <string>

#include "HostInterfaces.h"
#include "platform/win32/com/ComResult.h"
#include "platform/win32/com/ModuleLifetime.h"
#include "platform/win32/com/UniqueHandle.h"

namespace nv::standin {
namespace {

#ifdef _WIN64
constexpr SYSKIND kSysKind = SYS_WIN64;
#else
constexpr SYSKIND kSysKind = SYS_WIN32;
#endif

struct StandInClass {
  const CLSID* id;
  const wchar_t* name;
};

const StandInClass kClasses[] = {
    {&CLSID_VariablesService, L"VariablesService (NVextch host stand-in)"},
    {&CLSID_ReportWriter, L"ReportWriter (NVextch host stand-in)"},
    {&CLSID_WrapperCatalog, L"WrapperCatalog (NVextch host stand-in)"},
    {&CLSID_ActionsEditor, L"ActionsEditor (NVextch host stand-in)"},
};

std::wstring ClassKey(REFCLSID id) {
  wchar_t text[40] = {};
  StringFromGUID2(id, text, 40);
  return std::wstring(L"CLSID\\") + text;
}

HRESULT WriteText(const std::wstring& path, const wchar_t* name, const std::wstring& value) {
  com::unique_hkey key;
  RETURN_IF_FAILED(HRESULT_FROM_WIN32(
      RegCreateKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, key.put(), nullptr)));
  const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  return HRESULT_FROM_WIN32(
      RegSetValueExW(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()), size));
}

HRESULT RegisterAll() {
  const std::wstring path = com::ThisModulePath();
  RETURN_HR_IF(E_UNEXPECTED, path.empty());
  Microsoft::WRL::ComPtr<ITypeLib> library;
  RETURN_IF_FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library));
  RETURN_IF_FAILED(RegisterTypeLib(library.Get(), const_cast<OLECHAR*>(path.c_str()), nullptr));
  for (const StandInClass& standIn : kClasses) {
    const std::wstring key = ClassKey(*standIn.id);
    RETURN_IF_FAILED(WriteText(key, L"", standIn.name));
    RETURN_IF_FAILED(WriteText(key + L"\\InprocServer32", L"", path));
    RETURN_IF_FAILED(WriteText(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"));
  }
  return S_OK;
}

}  // namespace

HRESULT RegisterStandIn() noexcept {
  try {
    const HRESULT hr = RegisterAll();
    if (FAILED(hr)) UnregisterStandIn();  // nothing half-written stays behind
    return hr;
  } catch (...) {
    UnregisterStandIn();
    return E_OUTOFMEMORY;
  }
}

HRESULT UnregisterStandIn() noexcept {
  try {
    UnRegisterTypeLib(LIBID_NVHostClasses, 1, 0, LOCALE_NEUTRAL, kSysKind);
    HRESULT result = S_OK;
    for (const StandInClass& standIn : kClasses) {
      const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, ClassKey(*standIn.id).c_str());
      if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND && SUCCEEDED(result)) {
        result = HRESULT_FROM_WIN32(status);
      }
    }
    return result;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace nv::standin
