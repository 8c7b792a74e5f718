#include "platform/win32/com/EventConnectionPoint.h"

#include <olectl.h>

#include <new>

#include "platform/win32/com/ComEnumerator.h"
#include "platform/win32/com/ComIdentity.h"
#include "platform/win32/com/ComResult.h"

namespace nv::com {
namespace {

// Each connection as the sink was advised: the event interface's pointer and its cookie.
struct ConnectionTraits {
  using Interface = IEnumConnections;
  using Item = CONNECTDATA;
  using Entry = std::pair<DWORD, Microsoft::WRL::ComPtr<IDispatch>>;
  static REFIID Iid() { return IID_IEnumConnections; }
  static CONNECTDATA Copy(const Entry& entry) {
    entry.second->AddRef();
    return {entry.second.Get(), entry.first};
  }
};

}  // namespace

void* EventConnectionPoint::FindInterface(REFIID iid) noexcept {
  if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IConnectionPoint)) {
    return static_cast<IConnectionPoint*>(this);
  }
  return nullptr;
}

STDMETHODIMP EventConnectionPoint::GetConnectionInterface(IID* iid) {
  RETURN_HR_IF_NULL(E_POINTER, iid);
  *iid = DIID___ExtractionChaine;
  return S_OK;
}

STDMETHODIMP EventConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
  RETURN_HR_IF_NULL(E_POINTER, container);
  return container_.CopyTo(container);
}

// The sink must implement the event interface under its current identifier or an earlier one.
STDMETHODIMP EventConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
  RETURN_HR_IF_NULL(E_POINTER, cookie);
  *cookie = 0;
  RETURN_HR_IF_NULL(E_POINTER, sink);
  Microsoft::WRL::ComPtr<IDispatch> events;
  HRESULT found = sink->QueryInterface(DIID___ExtractionChaine, reinterpret_cast<void**>(events.GetAddressOf()));
  for (const GUID& earlier : kEarlierEventIds) {
    if (SUCCEEDED(found)) break;
    found = sink->QueryInterface(earlier, reinterpret_cast<void**>(events.GetAddressOf()));
  }
  RETURN_HR_IF(CONNECT_E_CANNOTCONNECT, FAILED(found));
  try {
    *cookie = sinks_.Add(std::move(events));
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

STDMETHODIMP EventConnectionPoint::Unadvise(DWORD cookie) {
  return sinks_.Remove(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
}

STDMETHODIMP EventConnectionPoint::EnumConnections(IEnumConnections** connections) {
  RETURN_HR_IF_NULL(E_POINTER, connections);
  *connections = nullptr;
  try {
    return ComEnumerator<ConnectionTraits>::Make(sinks_.Listed(), connections);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace nv::com
