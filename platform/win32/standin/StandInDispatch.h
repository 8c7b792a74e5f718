#pragma once
// IDispatch for a stand-in class: its dual interface as the embedded type library
// describes it, so that late-bound callers reach the same members as the vtable.
#include <windows.h>
#include <oaidl.h>
#include <wrl/client.h>

namespace nv::standin {

// The description of one interface of the embedded library; raises its HRESULT when the
// library cannot be read.
Microsoft::WRL::ComPtr<ITypeInfo> LoadInterfaceTypeInfo(REFIID interfaceId);

template <typename Interface>
class StandInDispatch : public Interface {
 public:
  StandInDispatch() : typeInfo_(LoadInterfaceTypeInfo(__uuidof(Interface))) {}

  void* FindInterface(REFIID iid) noexcept {
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) || IsEqualIID(iid, __uuidof(Interface))) {
      return static_cast<Interface*>(this);
    }
    return nullptr;
  }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    return typeInfo_.CopyTo(info);
  }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    return DispGetIDsOfNames(typeInfo_.Get(), names, count, ids);
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* argumentError) override {
    return DispInvoke(static_cast<Interface*>(this), typeInfo_.Get(), id, flags, parameters, result, exception,
                      argumentError);
  }

 private:
  Microsoft::WRL::ComPtr<ITypeInfo> typeInfo_;
};

}  // namespace nv::standin
