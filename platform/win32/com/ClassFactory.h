#pragma once
// The class factory of ExtractionChaine.
#include <windows.h>
#include <unknwn.h>

namespace nv::com {

class ExtractionChaineFactory : public IClassFactory {
 public:
  void* FindInterface(REFIID iid) noexcept;

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  STDMETHODIMP LockServer(BOOL lock) override;
};

}  // namespace nv::com
