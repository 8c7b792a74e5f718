#include "platform/win32/standin/StandInRegistration.h"

#include <oleauto.h>

#include <string>

#include "HostInterfaces.h"
#include "platform/win32/com/ClassesRoot.h"
#include "platform/win32/com/ComResult.h"
#include "platform/win32/com/ModuleLifetime.h"

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

std::wstring ClassKey(REFCLSID id) { return L"CLSID\\" + com::GuidText(id); }

HRESULT RegisterAll() {
  const std::wstring path = com::ThisModulePath();
  RETURN_HR_IF(E_UNEXPECTED, path.empty());
  RETURN_IF_FAILED(com::RegisterEmbeddedTypeLibrary(path));
  for (const StandInClass& standIn : kClasses) {
    const std::wstring key = ClassKey(*standIn.id);
    RETURN_IF_FAILED(com::WriteClassesRootText(key, L"", standIn.name));
    RETURN_IF_FAILED(com::WriteClassesRootText(key + L"\\InprocServer32", L"", path));
    RETURN_IF_FAILED(com::WriteClassesRootText(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"));
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
      const HRESULT hr = com::RemoveClassesRootTree(ClassKey(*standIn.id));
      if (FAILED(hr) && SUCCEEDED(result)) result = hr;
    }
    return result;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace nv::standin
