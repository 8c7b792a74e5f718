#include "platform/win32/standin/StandInFactory.h"

#include "platform/win32/com/ModuleLifetime.h"
#include "platform/win32/standin/StandInClasses.h"

namespace nv::standin {

void* StandInFactory::FindInterface(REFIID iid) noexcept {
  if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory)) return static_cast<IClassFactory*>(this);
  return nullptr;
}

STDMETHODIMP StandInFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  return CreateStandInObject(classId_, iid, object);
}

STDMETHODIMP StandInFactory::LockServer(BOOL lock) {
  com::LockModule(lock != FALSE);
  return S_OK;
}

}  // namespace nv::standin
