// What regsvr32 leaves in the registry, and that unregistering leaves nothing.
#include <gtest/gtest.h>
#include <wrl/client.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/win32/com/RegistrationTable.h"
#include "platform/win32/com/WindowsSdk.h"
#include "tests/com/ComServer.h"

namespace nv::comtest {
namespace {

std::optional<std::wstring> ReadString(const std::wstring& key, const wchar_t* name) {
  DWORD size = 0;
  if (RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), name, RRF_RT_REG_SZ, nullptr, nullptr, &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::wstring value(size / sizeof(wchar_t), L'\0');
  if (RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), name, RRF_RT_REG_SZ, nullptr, value.data(), &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  value.resize(wcslen(value.c_str()));
  return value;
}

bool KeyExists(const std::wstring& key) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return false;
  RegCloseKey(opened);
  return true;
}

std::wstring Lower(std::wstring text) {
  CharLowerBuffW(text.data(), static_cast<DWORD>(text.size()));
  return text;
}

std::vector<std::wstring> EveryRegisteredKey() {
  std::vector<std::wstring> keys = {L"CLSID\\" + GuidText(kClassId), kProgId, L"TypeLib\\" + GuidText(kLibraryId)};
  for (const IID& iid : kInterfaceIds) keys.push_back(L"Interface\\" + GuidText(iid));
  for (const IID& iid : kEventIds) keys.push_back(L"Interface\\" + GuidText(iid));
  return keys;
}

TEST(Registration, WritesTheClassItsProgIdTheLibraryAndTheInterfaces) {
  const std::wstring classKey = L"CLSID\\" + GuidText(kClassId);
  EXPECT_EQ(Lower(ReadString(classKey + L"\\InprocServer32", nullptr).value_or(L"")), Lower(ServerPath()));
  EXPECT_EQ(ReadString(classKey + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
  EXPECT_EQ(ReadString(classKey + L"\\ProgID", nullptr), kProgId);
  EXPECT_EQ(ReadString(std::wstring(kProgId) + L"\\Clsid", nullptr), GuidText(kClassId));
  const std::wstring platform = sizeof(void*) == 8 ? L"win64" : L"win32";
  EXPECT_EQ(Lower(ReadString(L"TypeLib\\" + GuidText(kLibraryId) + L"\\1.2\\0\\" + platform, nullptr).value_or(L"")),
            Lower(ServerPath()));
  for (const IID& iid : kInterfaceIds) {
    EXPECT_EQ(ReadString(L"Interface\\" + GuidText(iid) + L"\\TypeLib", nullptr), GuidText(kLibraryId));
  }
  for (const IID& iid : kEventIds) {
    EXPECT_EQ(ReadString(L"Interface\\" + GuidText(iid) + L"\\TypeLib", nullptr), GuidText(kLibraryId));
  }
  Microsoft::WRL::ComPtr<ITypeLib> library;
  EXPECT_HRESULT_SUCCEEDED(LoadRegTypeLib(kLibraryId, 1, 2, LOCALE_NEUTRAL, &library));
}

std::wstring Wide(const std::string& ascii) { return std::wstring(ascii.begin(), ascii.end()); }

// The installer's rows come from the table, not from the DLL: its identifiers must be the
// server's own, or the MSI would register a class nobody answers to.
TEST(Registration, TheTableNamesTheServersIdentifiers) {
  namespace ids = com::ids;
  EXPECT_EQ(Wide(ids::kClass), GuidText(kClassId));
  EXPECT_EQ(Wide(ids::kLibrary), GuidText(kLibraryId));
  EXPECT_EQ(Wide(ids::kProgId), kProgId);
  std::vector<std::wstring> interfaces = {Wide(ids::kInterface)}, events = {Wide(ids::kEvents)};
  for (const char* earlier : ids::kEarlierInterfaces) interfaces.push_back(Wide(earlier));
  for (const char* earlier : ids::kEarlierEvents) events.push_back(Wide(earlier));
  std::vector<std::wstring> expectedInterfaces, expectedEvents;
  for (const IID& iid : kInterfaceIds) expectedInterfaces.push_back(GuidText(iid));
  for (const IID& iid : kEventIds) expectedEvents.push_back(GuidText(iid));
  EXPECT_EQ(interfaces, expectedInterfaces);
  EXPECT_EQ(events, expectedEvents);
}

TEST(Registration, TheLibrarysRegisteredNameAndVersionAreItsOwn) {
  Microsoft::WRL::ComPtr<ITypeLib> library;
  ASSERT_HRESULT_SUCCEEDED(LoadRegTypeLib(kLibraryId, 1, 2, LOCALE_NEUTRAL, &library));
  BSTR title = nullptr;
  ASSERT_HRESULT_SUCCEEDED(library->GetDocumentation(-1, nullptr, &title, nullptr, nullptr));
  const std::wstring libraryTitle = title;
  SysFreeString(title);
  EXPECT_EQ(ReadString(L"TypeLib\\" + GuidText(kLibraryId) + L"\\1.2", nullptr), libraryTitle);
  TLIBATTR* attributes = nullptr;
  ASSERT_HRESULT_SUCCEEDED(library->GetLibAttr(&attributes));
  EXPECT_EQ(attributes->wMajorVerNum, com::ids::kLibraryMajor);
  EXPECT_EQ(attributes->wMinorVerNum, com::ids::kLibraryMinor);
  library->ReleaseTLibAttr(attributes);
}

TEST(Registration, UnregisteringLeavesNothingBehind) {
  ASSERT_EQ(RunRegsvr32(true), 0u);
  for (const std::wstring& key : EveryRegisteredKey()) {
    EXPECT_FALSE(KeyExists(key)) << std::string(key.begin(), key.end());
  }
  CLSID classId{};
  EXPECT_HRESULT_FAILED(CLSIDFromProgID(kProgId, &classId));
  // The rest of the run needs the server again.
  ASSERT_EQ(RunRegsvr32(false), 0u);
  EXPECT_TRUE(CreatePlugin());
}

}  // namespace
}  // namespace nv::comtest
