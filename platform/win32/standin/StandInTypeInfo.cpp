#include "platform/win32/standin/StandInDispatch.h"

#include <oleauto.h>

#include "platform/win32/com/ComResult.h"
#include "platform/win32/com/ModuleLifetime.h"

namespace nv::standin {

// oleaut32 keeps a loaded library cached, so each object asking again costs little.
Microsoft::WRL::ComPtr<ITypeInfo> LoadInterfaceTypeInfo(REFIID interfaceId) {
  Microsoft::WRL::ComPtr<ITypeLib> library;
  THROW_IF_FAILED_MSG(LoadTypeLibEx(com::ThisModulePath().c_str(), REGKIND_NONE, &library),
                      u"The host stand-in cannot read its type library");
  Microsoft::WRL::ComPtr<ITypeInfo> info;
  THROW_IF_FAILED_MSG(library->GetTypeInfoOfGuid(interfaceId, &info),
                      u"The host stand-in's type library does not describe the interface");
  return info;
}

}  // namespace nv::standin
