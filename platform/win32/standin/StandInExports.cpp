// The four entry points of the host stand-in (exported through nvhoststandin.def).
#include <windows.h>

#include "platform/win32/com/ComObject.h"
#include "platform/win32/com/ModuleLifetime.h"
#include "platform/win32/standin/StandInClasses.h"
#include "platform/win32/standin/StandInFactory.h"
#include "platform/win32/standin/StandInRegistration.h"

extern "C" {

HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID classId, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (!nv::standin::IsStandInClass(classId)) return CLASS_E_CLASSNOTAVAILABLE;
  try {
    const auto factory = nv::com::MakeComObject<nv::standin::StandInFactory>(classId);
    return factory->QueryInterface(iid, object);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

HRESULT STDAPICALLTYPE DllCanUnloadNow() { return nv::com::ModuleInUse() ? S_FALSE : S_OK; }

HRESULT STDAPICALLTYPE DllRegisterServer() { return nv::standin::RegisterStandIn(); }

HRESULT STDAPICALLTYPE DllUnregisterServer() { return nv::standin::UnregisterStandIn(); }

}  // extern "C"
