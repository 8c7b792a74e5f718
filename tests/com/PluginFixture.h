#pragma once
// A new plug-in object per test over a clean scenario store, and the small conversions
// the tests speak in.
#include <gtest/gtest.h>
#include <wrl/client.h>

#include <string>
#include <string_view>

#include "platform/win32/com/Bstr.h"
#include "platform/win32/com/WindowsSdk.h"
#include "tests/com/ComServer.h"
#include "tests/com/SlotCall.h"

namespace nv::comtest {

inline constexpr wchar_t kTaskKey[] = L"SOFTWARE\\NOVRA\\Scenarios\\S\\Taches\\T1";

com::UniqueBstr Bstr(std::wstring_view text);
std::wstring TextOf(BSTR value);

// The machine's scenario store, as the plug-in reads it.
void ClearNovraKeys();
void WriteTaskValue(const wchar_t* name, const wchar_t* value);

class PluginTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Slot calls for the common shapes; each expects the call to succeed.
  std::wstring GetTextAt(int slot);
  void PutTextAt(int slot, std::wstring_view value);
  template <typename T>
  T GetAt(int slot) {
    T value{};
    EXPECT_HRESULT_SUCCEEDED(CallAt(slot, &value)) << "slot " << slot;
    return value;
  }
  // InitializeProperties(T1, S, language) through slot 39.
  void Initialize(LONG language);

  template <typename... Args>
  HRESULT CallAt(int slot, Args... args) {
    return CallSlot(plugin_.Get(), slot, args...);
  }

  Microsoft::WRL::ComPtr<IDispatch> plugin_;
};

}  // namespace nv::comtest
