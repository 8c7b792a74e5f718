#include "platform/win32/com/EventSinks.h"

#include <vector>

namespace nv::com {

DWORD EventSinks::Add(Microsoft::WRL::ComPtr<IDispatch> sink) {
  const DWORD cookie = nextCookie_++;
  sinks_.emplace(cookie, std::move(sink));
  return cookie;
}

bool EventSinks::Remove(DWORD cookie) { return sinks_.erase(cookie) != 0; }

void EventSinks::Raise(DISPID event) const {
  std::vector<Microsoft::WRL::ComPtr<IDispatch>> listeners;
  listeners.reserve(sinks_.size());
  for (const auto& entry : sinks_) listeners.push_back(entry.second);
  DISPPARAMS none{};
  for (const auto& sink : listeners) {
    sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr);
  }
}

}  // namespace nv::com
