#pragma once
// One class factory for the stand-in's four classes: it makes objects of the class it
// was asked for.
#include <windows.h>
#include <unknwn.h>

namespace nv::standin {

class StandInFactory : public IClassFactory {
 public:
  explicit StandInFactory(REFCLSID classId) : classId_(classId) {}
  void* FindInterface(REFIID iid) noexcept;

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  STDMETHODIMP LockServer(BOOL lock) override;

 private:
  CLSID classId_;
};

}  // namespace nv::standin
