#pragma once
// The host's side of the plug-in's events: a sink advised on the connection point that
// counts the Complete events it receives.
#include <windows.h>
#include <oaidl.h>

namespace nv::nvhost {

class CompleteSink : public IDispatch {
 public:
  void* FindInterface(REFIID iid) noexcept;
  long CompleteCount() const noexcept { return completes_; }
  void ResetCount() noexcept { completes_ = 0; }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override;

 private:
  long completes_ = 0;
};

}  // namespace nv::nvhost
