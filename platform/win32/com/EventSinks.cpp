#include "platform/win32/com/EventSinks.h"

#include <vector>

namespace nv::com {

DWORD EventSinks::Add(Microsoft::WRL::ComPtr<IDispatch> sink) {
  const DWORD cookie = nextCookie_++;
  sinks_.emplace(cookie, std::move(sink));
  return cookie;
}

bool EventSinks::Remove(DWORD cookie) { return sinks_.erase(cookie) != 0; }

std::vector<std::pair<DWORD, Microsoft::WRL::ComPtr<IDispatch>>> EventSinks::Listed() const {
  return {sinks_.begin(), sinks_.end()};
}

void EventSinks::Raise(DISPID event) const {
  DISPPARAMS none{};
  for (const auto& [cookie, sink] : Listed()) {
    sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr);
  }
}

}  // namespace nv::com
