#pragma once
// The connection point of the event interface. It is made on each request and keeps its
// container alive; the sinks themselves live in the container.
#include <windows.h>
#include <ocidl.h>
#include <wrl/client.h>

#include "platform/win32/com/EventSinks.h"

namespace nv::com {

class EventConnectionPoint : public IConnectionPoint {
 public:
  EventConnectionPoint(Microsoft::WRL::ComPtr<IConnectionPointContainer> container, EventSinks& sinks)
      : container_(std::move(container)), sinks_(sinks) {}
  ~EventConnectionPoint() = default;

  void* FindInterface(REFIID iid) noexcept;

  STDMETHODIMP GetConnectionInterface(IID* iid) override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

 private:
  Microsoft::WRL::ComPtr<IConnectionPointContainer> container_;
  EventSinks& sinks_;
};

}  // namespace nv::com
