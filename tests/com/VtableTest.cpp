// Every slot of _ExtractionChaine called by its position in the vtable, as a host bound to
// the table calls it, does what its member does.

#include <string>

#include "platform/win32/com/WindowsSdk.h"
#include "tests/com/PluginFixture.h"
#include "tests/com/TestDispatch.h"
#include "tests/hostcom/StandInServer.h"

namespace nv::comtest {
namespace {

constexpr HRESULT kOverflow = static_cast<HRESULT>(0x800A0006);
constexpr HRESULT kTypeMismatch = static_cast<HRESULT>(0x800A000D);

void ExpectErrorInfo(HRESULT hr, HRESULT expected) {
  EXPECT_EQ(hr, expected);
  const ErrorRecord error = TakeErrorInfo();
  EXPECT_TRUE(error.present);
  EXPECT_FALSE(error.description.empty());
  EXPECT_EQ(error.source, kErrorSource);
  EXPECT_TRUE(IsEqualGUID(error.interfaceId, kInterfaceIds[0]));
}

using Slots = PluginTest;

// The property slots, and the members that read the same fields.
TEST_F(Slots, PropertiesRoundTrip) {
  struct Property { int get, put; const wchar_t* value; };
  const Property properties[] = {
      {1, 2, L"T1"}, {5, 6, L"SOFTWARE\\NOVRA"}, {9, 10, L"C:\\rapport.txt"}, {11, 12, L"D\u00E9concat\u00E9nation"}};
  for (const Property& p : properties) PutTextAt(p.put, p.value);
  for (const Property& p : properties) EXPECT_EQ(GetTextAt(p.get), p.value) << "slot " << p.get;
  EXPECT_EQ(GetTextAt(30), L"T1");
  PutTextAt(2, L"");
  EXPECT_EQ(GetTextAt(1), L"");
  EXPECT_HRESULT_SUCCEEDED(CallAt(4, static_cast<LONG>(0x80000002)));
  EXPECT_EQ(GetAt<LONG>(3), static_cast<LONG>(0x80000002));
  EXPECT_HRESULT_SUCCEEDED(CallAt(8, static_cast<short>(-5)));
  EXPECT_EQ(GetAt<short>(7), -5);
  EXPECT_EQ(GetAt<LONG>(29), -5);
}

// Slot 14 (by value) and slot 15 (by reference) both keep the very object.
TEST_F(Slots, BoutonKeepsTheHostObject) {
  TestDispatch first, second;
  EXPECT_HRESULT_SUCCEEDED(CallAt(15, static_cast<IDispatch*>(&first)));
  IDispatch* read = nullptr;
  EXPECT_HRESULT_SUCCEEDED(CallAt(13, &read));
  EXPECT_EQ(read, &first);
  if (read) read->Release();
  EXPECT_HRESULT_SUCCEEDED(CallAt(14, static_cast<IDispatch*>(&second)));
  EXPECT_HRESULT_SUCCEEDED(CallAt(13, &read));
  EXPECT_EQ(read, &second);
  if (read) read->Release();
  EXPECT_EQ(first.References(), 1u);
  EXPECT_HRESULT_SUCCEEDED(CallAt(15, static_cast<IDispatch*>(nullptr)));
  EXPECT_HRESULT_SUCCEEDED(CallAt(13, &read));
  EXPECT_EQ(read, nullptr);
  EXPECT_EQ(second.References(), 1u);
}

// RunT (whatever its argument), Run with a non-zero value and ExecuteTache all execute the
// task: each run stores the status of an ended run over the one written before it.
// Run(0), which executes nothing, is checked with the events.
TEST_F(Slots, ExecutionMembersRunTheTask) {
  WriteTaskValue(L"Fonction", L"0");
  WriteTaskValue(L"Separateur", L";");
  WriteTaskValue(L"Fields.Count", L"1");
  WriteTaskValue(L"Fields(1).Var", L"@A");
  WriteTaskValue(L"Chaine", L"a");
  struct Execution { int slot; short data; };
  for (const Execution& e : {Execution{16, 0}, Execution{17, 5}, Execution{17, -1}, Execution{38, 0}}) {
    SCOPED_TRACE("slot " + std::to_string(e.slot) + " with " + std::to_string(e.data));
    Initialize(0);
    WriteTaskValue(L"Etat", L"0");
    EXPECT_EQ(e.slot == 38 ? CallAt(38) : CallAt(e.slot, e.data), S_OK);
    EXPECT_EQ(GetAt<LONG>(24), 2);
  }
}

TEST_F(Slots, IsActionSupportedRefusesOnlyType1) {
  const std::pair<LONG, VARIANT_BOOL> cases[] = {
      {0, VARIANT_TRUE}, {1, VARIANT_FALSE}, {2, VARIANT_TRUE}, {3, VARIANT_TRUE}, {7, VARIANT_TRUE}, {-1, VARIANT_TRUE}};
  for (const auto& [type, expected] : cases) {
    LONG argument = type;
    VARIANT_BOOL supported = 1;
    EXPECT_HRESULT_SUCCEEDED(CallAt(21, &argument, &supported));
    EXPECT_EQ(supported, expected) << "type " << type;
    EXPECT_EQ(argument, type);
  }
}

TEST_F(Slots, GetPictureMakesANew16x16PictureEachCall) {
  Microsoft::WRL::ComPtr<IPictureDisp> first, second;
  ASSERT_HRESULT_SUCCEEDED(CallAt(23, first.GetAddressOf()));
  ASSERT_HRESULT_SUCCEEDED(CallAt(23, second.GetAddressOf()));
  ASSERT_TRUE(first && second);
  EXPECT_NE(first.Get(), second.Get());
  Microsoft::WRL::ComPtr<IPicture> picture, other;
  ASSERT_HRESULT_SUCCEEDED(first.As(&picture));
  ASSERT_HRESULT_SUCCEEDED(second.As(&other));
  SHORT type = 0;
  EXPECT_HRESULT_SUCCEEDED(picture->get_Type(&type));
  EXPECT_EQ(type, PICTYPE_BITMAP);
  OLE_HANDLE handle = 0, otherHandle = 0;
  ASSERT_HRESULT_SUCCEEDED(picture->get_Handle(&handle));
  ASSERT_HRESULT_SUCCEEDED(other->get_Handle(&otherHandle));
  EXPECT_NE(handle, otherHandle);
  BITMAP bitmap{};
  ASSERT_NE(GetObjectW(reinterpret_cast<HBITMAP>(static_cast<UINT_PTR>(handle)), sizeof(bitmap), &bitmap), 0);
  EXPECT_EQ(bitmap.bmWidth, 16);
  EXPECT_EQ(bitmap.bmHeight, 16);
}

TEST_F(Slots, GetStatusReadsTheStoredStatus) {
  Initialize(0);
  EXPECT_EQ(GetAt<LONG>(24), 0) << "no task stored";
  WriteTaskValue(L"Etat", L"2");
  EXPECT_EQ(GetAt<LONG>(24), 2);
  WriteTaskValue(L"Etat", L"3");
  EXPECT_EQ(GetAt<LONG>(24), 3);
  WriteTaskValue(L"Etat", L"deux");
  LONG status = -1;
  ExpectErrorInfo(CallAt(24, &status), kTypeMismatch);
}

// Title, summary and actions come from the host's classes; where they are not
// registered, the members fail with the creation's HRESULT.
TEST_F(Slots, HostClassMembersFailWithTheCreationError) {
  Initialize(0);
  const hostcomtest::MissingHostClass noCatalogue(hostcomtest::kWrapperCatalogClass);
  const hostcomtest::MissingHostClass noEditor(hostcomtest::kActionsEditorClass);
  for (const int slot : {25, 26, 28}) {
    com::UniqueBstr text;
    ExpectErrorInfo(CallAt(slot, text.put()), REGDB_E_CLASSNOTREG);
    EXPECT_EQ(text.get(), nullptr) << "slot " << slot;
  }
}

// Arguments by reference are read and left as they were.
TEST_F(Slots, SetMembersSetTheirField) {
  struct TextSetter { int slot, getter; const wchar_t* value; };
  for (const TextSetter& s : {TextSetter{32, 1, L"T2"}, TextSetter{34, 5, L"SOFTWARE\\X"}, TextSetter{35, 9, L"r.txt"},
                              TextSetter{36, 11, L"Sc\u00E9nario"}}) {
    const com::UniqueBstr value = Bstr(s.value);
    BSTR argument = value.get();
    EXPECT_HRESULT_SUCCEEDED(CallAt(s.slot, &argument));
    EXPECT_EQ(argument, value.get()) << "slot " << s.slot;
    EXPECT_EQ(GetTextAt(s.getter), s.value) << "slot " << s.slot;
  }
  LONG root = static_cast<LONG>(0x80000001);
  EXPECT_HRESULT_SUCCEEDED(CallAt(33, &root));
  EXPECT_EQ(GetAt<LONG>(3), static_cast<LONG>(0x80000001));
  LONG mode = 1;
  EXPECT_HRESULT_SUCCEEDED(CallAt(37, &mode));
  EXPECT_EQ(GetAt<short>(7), 1);
}

TEST_F(Slots, SetWorkingModeOutside16BitsFailsWithOverflow) {
  EXPECT_HRESULT_SUCCEEDED(CallAt(8, static_cast<short>(1)));
  LONG mode = 40000;
  ExpectErrorInfo(CallAt(37, &mode), kOverflow);
  EXPECT_EQ(mode, 40000);
  EXPECT_EQ(GetAt<short>(7), 1);
}

// The language is the module's: it changes the texts of every object of the DLL.
TEST_F(Slots, InitializePropertiesSetsTheContext) {
  const Microsoft::WRL::ComPtr<IDispatch> other = CreatePlugin();
  PutTextAt(10, L"keep.txt");
  Initialize(10000);
  EXPECT_EQ(GetAt<LONG>(3), static_cast<LONG>(0x80000002));
  EXPECT_EQ(GetTextAt(5), L"SOFTWARE\\NOVRA\\Scenarios\\S\\Taches");
  EXPECT_EQ(GetTextAt(1), L"T1");
  EXPECT_EQ(GetTextAt(11), L"S");
  EXPECT_EQ(GetAt<short>(7), 1);
  EXPECT_EQ(GetTextAt(9), L"keep.txt");
  com::UniqueBstr description;
  ASSERT_HRESULT_SUCCEEDED(CallSlot(other.Get(), 18, description.put()));
  EXPECT_NE(TextOf(description.get()).find(L"String extraction"), std::wstring::npos);
}

// The description names the task, in the language last set.
TEST_F(Slots, SetLanguageSwitchesTheTexts) {
  Initialize(0);
  for (const auto& [language, title] : {std::pair{10000L, L"String extraction"}, {0L, L"Extraction Chaine"}}) {
    LONG argument = language;
    EXPECT_HRESULT_SUCCEEDED(CallAt(31, &argument));
    const std::wstring description = GetTextAt(18);
    EXPECT_NE(description.find(title), std::wstring::npos) << "language " << language;
    EXPECT_NE(description.find(L"T1"), std::wstring::npos);
  }
}

}  // namespace
}  // namespace nv::comtest
