#pragma once
// What DllRegisterServer writes and DllUnregisterServer removes: the class, its ProgID,
// the type library and the interfaces, earlier identifiers included.
#include <windows.h>

namespace nv::com {

HRESULT RegisterServer() noexcept;
// Removes every key the registration writes; keys already gone are no failure.
HRESULT UnregisterServer() noexcept;

}  // namespace nv::com
