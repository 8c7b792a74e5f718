#pragma once
// The sinks advised on the event interface, by cookie, and the raising of an event on
// every one of them.
#include <windows.h>
#include <oaidl.h>
#include <wrl/client.h>

#include <map>
#include <utility>
#include <vector>

namespace nv::com {

class EventSinks {
 public:
  DWORD Add(Microsoft::WRL::ComPtr<IDispatch> sink);
  bool Remove(DWORD cookie);
  // The sinks advised now, by cookie, in the order they were advised.
  std::vector<std::pair<DWORD, Microsoft::WRL::ComPtr<IDispatch>>> Listed() const;
  // Calls the event on each sink advised when it starts; a sink may unadvise meanwhile.
  // A sink's failure is its own: the others still hear the event.
  void Raise(DISPID event) const;

 private:
  std::map<DWORD, Microsoft::WRL::ComPtr<IDispatch>> sinks_;
  DWORD nextCookie_ = 1;
};

}  // namespace nv::com
