#include "platform/win32/com/TypeLibrary.h"

#include <oleauto.h>

#include "platform/win32/com/ComIdentity.h"
#include "platform/win32/com/ComResult.h"
#include "platform/win32/com/ModuleLifetime.h"

namespace nv::com {

using Microsoft::WRL::ComPtr;

ComPtr<ITypeLib> LoadEmbeddedTypeLib() {
  ComPtr<ITypeLib> library;
  THROW_IF_FAILED_MSG(LoadTypeLibEx(ThisModulePath().c_str(), REGKIND_NONE, &library),
                      u"The type library of NVextch cannot be loaded");
  return library;
}

PluginTypeInfo LoadPluginTypeInfo() {
  const ComPtr<ITypeLib> library = LoadEmbeddedTypeLib();
  PluginTypeInfo info;
  THROW_IF_FAILED_MSG(library->GetTypeInfoOfGuid(IID__ExtractionChaine, &info.dispatchSide),
                      u"The type library does not describe _ExtractionChaine");
  HREFTYPE vtableSide = 0;
  THROW_IF_FAILED_MSG(info.dispatchSide->GetRefTypeOfImplType(static_cast<UINT>(-1), &vtableSide),
                      u"_ExtractionChaine is not dual");
  THROW_IF_FAILED_MSG(info.dispatchSide->GetRefTypeInfo(vtableSide, &info.vtableSide),
                      u"_ExtractionChaine is not dual");
  THROW_IF_FAILED_MSG(library->GetTypeInfoOfGuid(CLSID_ExtractionChaine, &info.coclass),
                      u"The type library does not describe ExtractionChaine");
  return info;
}

}  // namespace nv::com
