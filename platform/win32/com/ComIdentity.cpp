#include "platform/win32/com/ComIdentity.h"

#include "platform/win32/com/ErrorInfo.h"

namespace nv::com {

const wchar_t* ModuleErrorSource() noexcept { return kErrorSource; }

bool IsPluginInterfaceId(REFIID iid) noexcept {
  if (IsEqualIID(iid, IID__ExtractionChaine)) return true;
  for (const GUID& earlier : kEarlierInterfaceIds) {
    if (IsEqualIID(iid, earlier)) return true;
  }
  return false;
}

bool IsEventInterfaceId(REFIID iid) noexcept {
  if (IsEqualIID(iid, DIID___ExtractionChaine)) return true;
  for (const GUID& earlier : kEarlierEventIds) {
    if (IsEqualIID(iid, earlier)) return true;
  }
  return false;
}

}  // namespace nv::com
