#pragma once
// The one place where COM objects are made and destroyed. A class implements its
// interfaces and FindInterface; ComObject adds the reference count, QueryInterface and the
// module's object count, and deletes itself when the last reference goes.
#include <windows.h>
#include <wrl/client.h>

#include <atomic>
#include <utility>

#include "platform/win32/com/ModuleLifetime.h"

namespace nv::com {

template <typename Implementation>
class ComObject final : public Implementation {
 public:
  template <typename... Args>
  explicit ComObject(Args&&... args) : Implementation(std::forward<Args>(args)...) {
    ObjectCreated();
  }
  ~ComObject() { ObjectDestroyed(); }
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = this->FindInterface(iid);
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 private:
  // The first reference is the one MakeComObject's pointer takes.
  std::atomic<ULONG> references_{0};
};

// A new object with one reference, held by the returned pointer. (mingw's ComPtr::Attach
// adds a reference, unlike WRL's, so the pointer takes its reference by construction.)
template <typename Implementation, typename... Args>
Microsoft::WRL::ComPtr<ComObject<Implementation>> MakeComObject(Args&&... args) {
  return Microsoft::WRL::ComPtr<ComObject<Implementation>>(new ComObject<Implementation>(std::forward<Args>(args)...));
}

}  // namespace nv::com
