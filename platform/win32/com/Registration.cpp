#include "platform/win32/com/Registration.h"

#include <oleauto.h>

#include <string>
#include <vector>

#include "platform/win32/com/ClassesRoot.h"
#include "platform/win32/com/ComIdentity.h"
#include "platform/win32/com/ComResult.h"
#include "platform/win32/com/ModuleLifetime.h"

namespace nv::com {
namespace {

// The automation marshalers: the type library's for the dual interface, IDispatch's for
// the event interface.
constexpr GUID kTypeLibMarshaler = {0x00020424, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr GUID kDispatchMarshaler = {0x00020420, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

#ifdef _WIN64
constexpr SYSKIND kSysKind = SYS_WIN64;
#else
constexpr SYSKIND kSysKind = SYS_WIN32;
#endif

struct Entry {
  std::wstring key;
  const wchar_t* name;  // null: the key alone, without a value
  std::wstring value;
};

std::wstring ClassKey() { return L"CLSID\\" + GuidText(CLSID_ExtractionChaine); }
std::wstring InterfaceKey(REFGUID iid) { return L"Interface\\" + GuidText(iid); }
std::wstring LibraryKey() { return L"TypeLib\\" + GuidText(LIBID_NVExtractionChaine); }
std::wstring LibraryVersion() { return std::to_wstring(kLibraryMajor) + L"." + std::to_wstring(kLibraryMinor); }

// An earlier identifier is registered as the interface it became.
void AddEarlierInterface(std::vector<Entry>& entries, REFGUID earlier, REFGUID current, const wchar_t* name,
                         REFGUID marshaler) {
  const std::wstring key = InterfaceKey(earlier);
  entries.push_back({key, L"", name});
  entries.push_back({key + L"\\ProxyStubClsid", L"", GuidText(marshaler)});
  entries.push_back({key + L"\\ProxyStubClsid32", L"", GuidText(marshaler)});
  entries.push_back({key + L"\\TypeLib", L"", GuidText(LIBID_NVExtractionChaine)});
  entries.push_back({key + L"\\TypeLib", L"Version", LibraryVersion()});
  entries.push_back({key + L"\\Forward", L"", GuidText(current)});
}

std::vector<Entry> Entries(const std::wstring& serverPath) {
  const std::wstring classKey = ClassKey();
  const std::wstring progId = kProgId;
  std::vector<Entry> entries = {
      {classKey, L"", kClassName},
      {classKey + L"\\InprocServer32", L"", serverPath},
      {classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
      {classKey + L"\\ProgID", L"", progId},
      {classKey + L"\\VERSION", L"", LibraryVersion()},
      {classKey + L"\\TypeLib", L"", GuidText(LIBID_NVExtractionChaine)},
      {classKey + L"\\Programmable", nullptr, {}},
      {progId, L"", kClassName},
      {progId + L"\\Clsid", L"", GuidText(CLSID_ExtractionChaine)},
  };
  for (const GUID& earlier : kEarlierInterfaceIds) {
    AddEarlierInterface(entries, earlier, IID__ExtractionChaine, L"_ExtractionChaine", kTypeLibMarshaler);
  }
  for (const GUID& earlier : kEarlierEventIds) {
    AddEarlierInterface(entries, earlier, DIID___ExtractionChaine, L"__ExtractionChaine", kDispatchMarshaler);
  }
  return entries;
}

HRESULT Write(const Entry& entry) { return WriteClassesRootText(entry.key, entry.name, entry.value); }

HRESULT RegisterAll() {
  const std::wstring serverPath = ThisModulePath();
  RETURN_HR_IF(E_UNEXPECTED, serverPath.empty());
  RETURN_IF_FAILED(RegisterEmbeddedTypeLibrary(serverPath));
  for (const Entry& entry : Entries(serverPath)) RETURN_IF_FAILED(Write(entry));
  return S_OK;
}

}  // namespace

HRESULT RegisterServer() noexcept {
  try {
    const HRESULT hr = RegisterAll();
    if (FAILED(hr)) UnregisterServer();  // nothing half-written stays behind
    return hr;
  } catch (...) {
    UnregisterServer();
    return E_OUTOFMEMORY;
  }
}

HRESULT UnregisterServer() noexcept {
  try {
    // The library's own removal first; what it leaves (or never registered) goes below.
    UnRegisterTypeLib(LIBID_NVExtractionChaine, kLibraryMajor, kLibraryMinor, LOCALE_NEUTRAL, kSysKind);
    HRESULT result = S_OK;
    const auto remove = [&](const std::wstring& path) {
      const HRESULT hr = RemoveClassesRootTree(path);
      if (FAILED(hr) && SUCCEEDED(result)) result = hr;
    };
    remove(ClassKey());
    remove(kProgId);
    remove(InterfaceKey(IID__ExtractionChaine));
    remove(InterfaceKey(DIID___ExtractionChaine));
    for (const GUID& earlier : kEarlierInterfaceIds) remove(InterfaceKey(earlier));
    for (const GUID& earlier : kEarlierEventIds) remove(InterfaceKey(earlier));
    remove(LibraryKey() + L"\\" + LibraryVersion());
    // Other versions of the library, if any, keep their key.
    RegDeleteKeyW(HKEY_CLASSES_ROOT, LibraryKey().c_str());
    return result;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace nv::com
