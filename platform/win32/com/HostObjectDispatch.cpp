#include "platform/win32/com/HostObjectDispatch.h"

#include <memory>

namespace nv::com {
namespace {

class DispatchHostObject final : public HostObject {
 public:
  explicit DispatchHostObject(IDispatch* object) : object_(object) {}
  IDispatch* Get() const noexcept { return object_.Get(); }

 private:
  Microsoft::WRL::ComPtr<IDispatch> object_;
};

}  // namespace

HostObjectRef WrapHostObject(IDispatch* object) {
  if (object == nullptr) return {};
  return std::make_shared<DispatchHostObject>(object);
}

IDispatch* DispatchOf(const HostObjectRef& reference) noexcept {
  const auto* held = dynamic_cast<const DispatchHostObject*>(reference.get());
  return held == nullptr ? nullptr : held->Get();
}

}  // namespace nv::com
