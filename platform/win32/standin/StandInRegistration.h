#pragma once
// What the stand-in's DllRegisterServer writes: its four classes as in-process servers of
// this DLL, and its type library (which registers the interfaces for the automation
// marshaler). Unregistering removes the same.
#include <windows.h>

namespace nv::standin {

HRESULT RegisterStandIn() noexcept;
HRESULT UnregisterStandIn() noexcept;

}  // namespace nv::standin
