#pragma once
// Calls a member of _ExtractionChaine by its slot number in the interface's table (1 is
// the first slot after IDispatch), as a host compiled against that table does: by vtable
// position, not through any header of the server.
#include "platform/win32/com/WindowsSdk.h"

namespace nv::comtest {

inline constexpr int kSlotsBeforeTable = 7;  // IUnknown 3, IDispatch 4

template <typename... Args>
HRESULT CallSlot(IDispatch* object, int slot, Args... args) {
  using Member = HRESULT(STDMETHODCALLTYPE*)(IDispatch*, Args...);
  void** vtable = *reinterpret_cast<void***>(object);
  const auto member = reinterpret_cast<Member>(vtable[kSlotsBeforeTable + slot - 1]);
  return member(object, args...);
}

}  // namespace nv::comtest
