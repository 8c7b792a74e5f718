#include "platform/win32/nvhost/CompleteSink.h"

#include "NVExtractionChaine.h"

namespace nv::nvhost {
namespace {

constexpr DISPID kComplete = 2;

}  // namespace

void* CompleteSink::FindInterface(REFIID iid) noexcept {
  if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) || IsEqualIID(iid, DIID___ExtractionChaine)) {
    return static_cast<IDispatch*>(this);
  }
  return nullptr;
}

STDMETHODIMP CompleteSink::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

// Progress is never raised; any other event is none of ours.
STDMETHODIMP CompleteSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) {
  if (id == kComplete) ++completes_;
  return S_OK;
}

}  // namespace nv::nvhost
