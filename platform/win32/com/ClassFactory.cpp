#include "platform/win32/com/ClassFactory.h"

#include "platform/win32/com/ComObject.h"
#include "platform/win32/com/ComResult.h"
#include "platform/win32/com/DllPlatform.h"
#include "platform/win32/com/ErrorInfo.h"
#include "platform/win32/com/ExtractionChaineObject.h"
#include "platform/win32/com/ModuleLifetime.h"

namespace nv::com {

void* ExtractionChaineFactory::FindInterface(REFIID iid) noexcept {
  if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory)) return static_cast<IClassFactory*>(this);
  return nullptr;
}

// A creation that fails in the core (an unreadable language setting) reports its error.
STDMETHODIMP ExtractionChaineFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  RETURN_HR_IF_NULL(E_POINTER, object);
  *object = nullptr;
  RETURN_HR_IF(CLASS_E_NOAGGREGATION, outer != nullptr);
  try {
    AttachCoreToWindows();
    const auto created = MakeComObject<ExtractionChaineObject>();
    return created->QueryInterface(iid, object);
  } catch (...) {
    return ReportCurrentException(IID_IClassFactory);
  }
}

STDMETHODIMP ExtractionChaineFactory::LockServer(BOOL lock) {
  LockModule(lock != FALSE);
  return S_OK;
}

}  // namespace nv::com
