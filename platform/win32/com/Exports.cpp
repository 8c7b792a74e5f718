// The four entry points of an in-process COM server (exported through NVextch.def).
#include <windows.h>

#include "platform/win32/com/ClassFactory.h"
#include "platform/win32/com/ComIdentity.h"
#include "platform/win32/com/ComObject.h"
#include "platform/win32/com/ModuleLifetime.h"
#include "platform/win32/com/Registration.h"

extern "C" {

HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID classId, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (!IsEqualCLSID(classId, CLSID_ExtractionChaine)) return CLASS_E_CLASSNOTAVAILABLE;
  try {
    const auto factory = nv::com::MakeComObject<nv::com::ExtractionChaineFactory>();
    return factory->QueryInterface(iid, object);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

HRESULT STDAPICALLTYPE DllCanUnloadNow() { return nv::com::ModuleInUse() ? S_FALSE : S_OK; }

HRESULT STDAPICALLTYPE DllRegisterServer() { return nv::com::RegisterServer(); }

HRESULT STDAPICALLTYPE DllUnregisterServer() { return nv::com::UnregisterServer(); }

}  // extern "C"
