#include "platform/win32/standin/StandInClasses.h"

#include "platform/win32/com/ComObject.h"
#include "platform/win32/com/ErrorInfo.h"
#include "platform/win32/com/ModuleLifetime.h"
#include "platform/win32/standin/StandInObjects.h"

namespace nv::standin {
namespace {

template <typename Implementation>
HRESULT Create(REFIID iid, void** object) {
  const auto created = com::MakeComObject<Implementation>();
  return created->QueryInterface(iid, object);
}

}  // namespace

bool IsStandInClass(REFCLSID classId) noexcept {
  return IsEqualCLSID(classId, CLSID_VariablesService) || IsEqualCLSID(classId, CLSID_ReportWriter) ||
         IsEqualCLSID(classId, CLSID_WrapperCatalog) || IsEqualCLSID(classId, CLSID_ActionsEditor);
}

HRESULT CreateStandInObject(REFCLSID classId, REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  try {
    if (IsEqualCLSID(classId, CLSID_VariablesService)) return Create<VariablesObject>(iid, object);
    if (IsEqualCLSID(classId, CLSID_ReportWriter)) return Create<ReportWriterObject>(iid, object);
    if (IsEqualCLSID(classId, CLSID_WrapperCatalog)) return Create<WrapperCatalogObject>(iid, object);
    if (IsEqualCLSID(classId, CLSID_ActionsEditor)) return Create<ActionsEditorObject>(iid, object);
    return CLASS_E_CLASSNOTAVAILABLE;
  } catch (...) {
    return com::ReportCurrentException(IID_IClassFactory);
  }
}

}  // namespace nv::standin
