#pragma once
// What decides whether the DLL may be unloaded: its live COM objects and the locks its
// clients hold on the class factory.
#include <windows.h>

#include <string>

namespace nv::com {

void ObjectCreated() noexcept;
void ObjectDestroyed() noexcept;
void LockModule(bool lock) noexcept;
bool ModuleInUse() noexcept;

// This DLL (not the process that loaded it) and its full path.
HMODULE ThisModule() noexcept;
std::wstring ThisModulePath();

}  // namespace nv::com
