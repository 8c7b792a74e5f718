#pragma once
// A dispatch object of the test's own, on the stack as in Wine's conformance tests: it
// counts its references (never deleting itself) and the calls it receives, and can stand
// as an event sink for one event interface identifier.
#include "platform/win32/com/WindowsSdk.h"

#include <map>

namespace nv::comtest {

class TestDispatch final : public IDispatch {
 public:
  explicit TestDispatch(const IID& eventId = GUID_NULL) : eventId_(eventId) {}

  ULONG References() const { return references_; }
  int Calls(DISPID id) const {
    const auto found = calls_.find(id);
    return found == calls_.end() ? 0 : found->second;
  }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool answered = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
                          (!IsEqualIID(eventId_, GUID_NULL) && IsEqualIID(iid, eventId_));
    *object = answered ? static_cast<IDispatch*>(this) : nullptr;
    if (!answered) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override { return --references_; }
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*, UINT*) override {
    ++calls_[id];
    lastArgumentCount_ = params ? params->cArgs : 0;
    return S_OK;
  }
  UINT LastArgumentCount() const { return lastArgumentCount_; }

 private:
  IID eventId_;
  ULONG references_ = 1;
  std::map<DISPID, int> calls_;
  UINT lastArgumentCount_ = 0;
};

}  // namespace nv::comtest
