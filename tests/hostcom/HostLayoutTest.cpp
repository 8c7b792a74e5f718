// The host's interfaces as the stand-in describes them: every member the plug-in calls
// sits at the slot the host's tables give it.
#include <gtest/gtest.h>
#include <wrl/client.h>

#include <string>

#include "tests/com/PluginFixture.h"
#include "tests/com/SlotCall.h"
#include "tests/hostcom/StandInServer.h"

namespace nv::hostcomtest {
namespace {

using Microsoft::WRL::ComPtr;

struct SlotOfMember {
  const IID* interfaceId;
  const wchar_t* member;
  INVOKEKIND kind;
  int slot;  // 1 is the first slot after IDispatch
};

const SlotOfMember kSlots[] = {
    {&kVariablesServiceInterface, L"ScenarioName", INVOKE_PROPERTYPUT, 2},
    {&kVariablesServiceInterface, L"RegistryRoot", INVOKE_PROPERTYPUT, 4},
    {&kVariablesServiceInterface, L"RegistrySubKey", INVOKE_PROPERTYPUT, 6},
    {&kVariablesServiceInterface, L"GetVariableValue", INVOKE_FUNC, 13},
    {&kVariablesServiceInterface, L"SetVariableValue", INVOKE_FUNC, 16},
    {&kReportWriterInterface, L"ReportFilePath", INVOKE_PROPERTYPUT, 10},
    {&kReportWriterInterface, L"ScenarioName", INVOKE_PROPERTYPUT, 12},
    {&kReportWriterInterface, L"AddReportLine", INVOKE_FUNC, 15},
    {&kWrapperCatalogInterface, L"GetWrapperTitle", INVOKE_FUNC, 17},
    {&kWrapperCatalogInterface, L"GetWrapperSummary", INVOKE_FUNC, 18},
    {&kActionsEditorInterface, L"ScenarioName", INVOKE_PROPERTYPUT, 2},
    {&kActionsEditorInterface, L"TaskName", INVOKE_PROPERTYPUT, 4},
    {&kActionsEditorInterface, L"RegistryRoot", INVOKE_PROPERTYPUT, 6},
    {&kActionsEditorInterface, L"RegistrySubKey", INVOKE_PROPERTYPUT, 8},
    {&kActionsEditorInterface, L"Mode", INVOKE_PROPERTYPUT, 10},
    {&kActionsEditorInterface, L"ShowHelp", INVOKE_FUNC, 11},
    {&kActionsEditorInterface, L"ModifyAction", INVOKE_FUNC, 12},
    {&kActionsEditorInterface, L"AddAction", INVOKE_FUNC, 13},
    {&kActionsEditorInterface, L"DeleteAction", INVOKE_FUNC, 16},
    {&kActionsEditorInterface, L"NextAction", INVOKE_FUNC, 17},
};

std::string Narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }

TEST(HostInterfaces, EveryCalledMemberSitsAtItsSlot) {
  ComPtr<ITypeLib> library;
  ASSERT_HRESULT_SUCCEEDED(LoadTypeLibEx(StandInPath().c_str(), REGKIND_NONE, &library));
  for (const SlotOfMember& expected : kSlots) {
    SCOPED_TRACE(Narrow(expected.member) + " at slot " + std::to_string(expected.slot));
    ComPtr<ITypeInfo> info;
    ASSERT_HRESULT_SUCCEEDED(library->GetTypeInfoOfGuid(*expected.interfaceId, &info));
    // The dual interface's vtable side.
    HREFTYPE vtableSide = 0;
    ComPtr<ITypeInfo> vtableInfo = info;
    if (SUCCEEDED(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &vtableSide))) {
      info->GetRefTypeInfo(vtableSide, &vtableInfo);
    }
    TYPEATTR* attributes = nullptr;
    ASSERT_HRESULT_SUCCEEDED(vtableInfo->GetTypeAttr(&attributes));
    const WORD count = attributes->cFuncs;
    vtableInfo->ReleaseTypeAttr(attributes);
    bool found = false;
    for (UINT index = 0; index < count && !found; ++index) {
      FUNCDESC* description = nullptr;
      ASSERT_HRESULT_SUCCEEDED(vtableInfo->GetFuncDesc(index, &description));
      com::UniqueBstr name;
      UINT names = 0;
      BSTR raw = nullptr;
      vtableInfo->GetNames(description->memid, &raw, 1, &names);
      name.reset(raw);
      if (description->invkind == expected.kind && comtest::TextOf(name.get()) == expected.member) {
        found = true;
        EXPECT_EQ(description->oVft, static_cast<SHORT>((comtest::kSlotsBeforeTable + expected.slot - 1) * sizeof(void*)));
      }
      vtableInfo->ReleaseFuncDesc(description);
    }
    EXPECT_TRUE(found);
  }
}

}  // namespace
}  // namespace nv::hostcomtest
