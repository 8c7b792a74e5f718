#pragma once
// Writes a new type library with the contents of one that widl compiled: same types,
// identifiers, flags and documentation, members arranged by the rules, and each member
// of an interface at the vtable offset of the slot it was declared in.
#include <windows.h>
#include <oaidl.h>

#include "platform/win32/typelib/MemberRules.h"

namespace nv::typelib {

void CopyLibrary(ITypeLib* source, ICreateTypeLib2* target, SYSKIND targetKind, const MemberRules& rules);

}  // namespace nv::typelib
