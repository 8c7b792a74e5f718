#pragma once
// What a self-registering server writes under HKEY_CLASSES_ROOT, and takes away again.
#include <windows.h>

#include <string>

namespace nv::com {

// "{XXXXXXXX-...}", as the registry names classes and interfaces.
std::wstring GuidText(REFGUID guid);

// A REG_SZ value under HKEY_CLASSES_ROOT\key (L"" names the default), the key created if
// need be; a null name makes the key alone.
HRESULT WriteClassesRootText(const std::wstring& key, const wchar_t* name, const std::wstring& value);

// The key and everything below it; a missing key is no failure.
HRESULT RemoveClassesRootTree(const std::wstring& key);

// Registers the type library embedded in the module at `modulePath`.
HRESULT RegisterEmbeddedTypeLibrary(const std::wstring& modulePath);

}  // namespace nv::com
