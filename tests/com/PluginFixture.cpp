#include "tests/com/PluginFixture.h"

namespace nv::comtest {

com::UniqueBstr Bstr(std::wstring_view text) {
  return com::UniqueBstr(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
}

std::wstring TextOf(BSTR value) { return value ? std::wstring(value, SysStringLen(value)) : std::wstring(); }

void ClearNovraKeys() {
  const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\NOVRA");
  EXPECT_TRUE(status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND) << status;
}

void WriteTaskValue(const wchar_t* name, const wchar_t* value) {
  const DWORD size = static_cast<DWORD>((wcslen(value) + 1) * sizeof(wchar_t));
  ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, kTaskKey, name, REG_SZ, value, size), ERROR_SUCCESS);
}

void PluginTest::SetUp() {
  ClearNovraKeys();
  plugin_ = CreatePlugin();
  ASSERT_TRUE(plugin_);
}

void PluginTest::TearDown() {
  plugin_.Reset();
  ClearNovraKeys();
}

std::wstring PluginTest::GetTextAt(int slot) {
  com::UniqueBstr value;
  EXPECT_HRESULT_SUCCEEDED(CallAt(slot, value.put())) << "slot " << slot;
  return TextOf(value.get());
}

void PluginTest::PutTextAt(int slot, std::wstring_view value) {
  const com::UniqueBstr text = Bstr(value);
  EXPECT_HRESULT_SUCCEEDED(CallAt(slot, text.get())) << "slot " << slot;
}

void PluginTest::Initialize(LONG language) {
  const com::UniqueBstr name = Bstr(L"T1");
  const com::UniqueBstr scenario = Bstr(L"S");
  BSTR nameArgument = name.get();
  BSTR scenarioArgument = scenario.get();
  ASSERT_HRESULT_SUCCEEDED(CallAt(39, &nameArgument, &scenarioArgument, &language));
}

}  // namespace nv::comtest
