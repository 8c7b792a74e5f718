#pragma once
// The interface table of _ExtractionChaine as hosts know it: every slot with its member,
// kind, dispatch identifier and parameters, in slot order.
#include "platform/win32/com/WindowsSdk.h"

#include <span>
#include <string_view>
#include <vector>

namespace nv::comtest {

struct TableSlot {
  int slot;
  std::wstring_view name;
  INVOKEKIND kind;
  DISPID dispid;
  bool described;  // false: in the vtable, not in the type library
  // Parameters as "flags type", e.g. "in,out BSTR*", "out,retval long*". Picture is the
  // standard picture's dispinterface (IPictureDisp) of the OLE standard library.
  std::vector<std::string_view> parameters;
};

std::span<const TableSlot> InterfaceTable();

}  // namespace nv::comtest
