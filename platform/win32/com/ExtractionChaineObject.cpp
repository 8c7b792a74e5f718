// The object's identity: its interfaces, dispatch through the type library, the event
// connection point, class information and error information.
#include "platform/win32/com/ExtractionChaineObject.h"

#include <olectl.h>

#include "platform/win32/com/ComEnumerator.h"
#include "platform/win32/com/ComIdentity.h"
#include "platform/win32/com/ComObject.h"
#include "platform/win32/com/ComResult.h"
#include "platform/win32/com/EventConnectionPoint.h"

namespace nv::com {
namespace {

constexpr DISPID kCompleteEvent = 2;

struct ConnectionPointTraits {
  using Interface = IEnumConnectionPoints;
  using Item = IConnectionPoint*;
  using Entry = Microsoft::WRL::ComPtr<IConnectionPoint>;
  static REFIID Iid() { return IID_IEnumConnectionPoints; }
  static IConnectionPoint* Copy(const Entry& entry) {
    entry->AddRef();
    return entry.Get();
  }
};

}  // namespace

ExtractionChaineObject::ExtractionChaineObject() : typeInfo_(LoadPluginTypeInfo()) {
  core_.OnComplete = [this] { sinks_.Raise(kCompleteEvent); };
}

void* ExtractionChaineObject::FindInterface(REFIID iid) noexcept {
  if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) || IsPluginInterfaceId(iid)) {
    return static_cast<_ExtractionChaine*>(this);
  }
  if (IsEqualIID(iid, IID_IConnectionPointContainer)) return static_cast<IConnectionPointContainer*>(this);
  if (IsEqualIID(iid, IID_IProvideClassInfo) || IsEqualIID(iid, IID_IProvideClassInfo2)) {
    return static_cast<IProvideClassInfo2*>(this);
  }
  if (IsEqualIID(iid, IID_ISupportErrorInfo)) return static_cast<ISupportErrorInfo*>(this);
  return nullptr;
}

STDMETHODIMP ExtractionChaineObject::GetTypeInfoCount(UINT* count) {
  RETURN_HR_IF_NULL(E_POINTER, count);
  *count = 1;
  return S_OK;
}

STDMETHODIMP ExtractionChaineObject::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  RETURN_HR_IF_NULL(E_POINTER, info);
  *info = nullptr;
  RETURN_HR_IF(DISP_E_BADINDEX, index != 0);
  return typeInfo_.dispatchSide.CopyTo(info);
}

// Names and calls go through the vtable side, whose members carry the slots the host binds to.
STDMETHODIMP ExtractionChaineObject::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  RETURN_HR_IF(DISP_E_UNKNOWNINTERFACE, !IsEqualIID(iid, IID_NULL));
  return DispGetIDsOfNames(typeInfo_.vtableSide.Get(), names, count, ids);
}

STDMETHODIMP ExtractionChaineObject::Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* params,
                                            VARIANT* result, EXCEPINFO* exception, UINT* argumentError) {
  RETURN_HR_IF(DISP_E_UNKNOWNINTERFACE, !IsEqualIID(iid, IID_NULL));
  return DispInvoke(static_cast<_ExtractionChaine*>(this), typeInfo_.vtableSide.Get(), id, flags, params, result,
                    exception, argumentError);
}

// One connection point serves the event interface under all its identifiers.
STDMETHODIMP ExtractionChaineObject::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
  RETURN_HR_IF_NULL(E_POINTER, point);
  *point = nullptr;
  RETURN_HR_IF(CONNECT_E_NOCONNECTION, !IsEventInterfaceId(iid));
  try {
    *point = MakeEventPoint().Detach();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

// The one point there is: the event interface's under its current identifier.
STDMETHODIMP ExtractionChaineObject::EnumConnectionPoints(IEnumConnectionPoints** points) {
  RETURN_HR_IF_NULL(E_POINTER, points);
  *points = nullptr;
  try {
    return ComEnumerator<ConnectionPointTraits>::Make({MakeEventPoint()}, points);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

Microsoft::WRL::ComPtr<IConnectionPoint> ExtractionChaineObject::MakeEventPoint() {
  return MakeComObject<EventConnectionPoint>(static_cast<IConnectionPointContainer*>(this), sinks_);
}

STDMETHODIMP ExtractionChaineObject::GetClassInfo(ITypeInfo** info) {
  RETURN_HR_IF_NULL(E_POINTER, info);
  return typeInfo_.coclass.CopyTo(info);
}

STDMETHODIMP ExtractionChaineObject::GetGUID(DWORD kind, GUID* guid) {
  RETURN_HR_IF_NULL(E_POINTER, guid);
  *guid = GUID_NULL;
  RETURN_HR_IF(E_INVALIDARG, kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID);
  *guid = DIID___ExtractionChaine;
  return S_OK;
}

STDMETHODIMP ExtractionChaineObject::InterfaceSupportsErrorInfo(REFIID iid) {
  return IsPluginInterfaceId(iid) ? S_OK : S_FALSE;
}

}  // namespace nv::com
