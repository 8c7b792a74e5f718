#include "platform/win32/com/ClassesRoot.h"

#include <oleauto.h>
#include <wrl/client.h>

#include "platform/win32/com/ComResult.h"
#include "platform/win32/com/UniqueHandle.h"

namespace nv::com {

std::wstring GuidText(REFGUID guid) {
  wchar_t text[40] = {};
  StringFromGUID2(guid, text, 40);
  return text;
}

HRESULT WriteClassesRootText(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
  unique_hkey opened;
  RETURN_IF_FAILED(HRESULT_FROM_WIN32(
      RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, opened.put(), nullptr)));
  if (name == nullptr) return S_OK;
  const auto* data = reinterpret_cast<const BYTE*>(value.c_str());
  const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  return HRESULT_FROM_WIN32(RegSetValueExW(opened.get(), name, 0, REG_SZ, data, size));
}

HRESULT RemoveClassesRootTree(const std::wstring& key) {
  const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
  return status == ERROR_FILE_NOT_FOUND ? S_OK : HRESULT_FROM_WIN32(status);
}

HRESULT RegisterEmbeddedTypeLibrary(const std::wstring& modulePath) {
  Microsoft::WRL::ComPtr<ITypeLib> library;
  RETURN_IF_FAILED(LoadTypeLibEx(modulePath.c_str(), REGKIND_NONE, &library));
  return RegisterTypeLib(library.Get(), const_cast<OLECHAR*>(modulePath.c_str()), nullptr);
}

}  // namespace nv::com
