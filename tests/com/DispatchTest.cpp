// Every member called by name, as a late-bound host calls it: GetIDsOfNames gives the
// table's dispatch identifiers, and Invoke reaches the member at its slot.
#include <string>
#include <variant>
#include <vector>

#include "platform/win32/com/UniqueVariant.h"
#include "tests/com/InterfaceTable.h"
#include "tests/com/PluginFixture.h"
#include "tests/com/TestDispatch.h"

namespace nv::comtest {
namespace {

using Value = std::variant<std::monostate, std::wstring, LONG, short, bool>;

VARIANT ToVariant(const Value& value) {
  VARIANT v;
  VariantInit(&v);
  if (const auto* text = std::get_if<std::wstring>(&value)) {
    v.vt = VT_BSTR;
    v.bstrVal = Bstr(*text).release();
  } else if (const auto* number = std::get_if<LONG>(&value)) {
    v.vt = VT_I4;
    v.lVal = *number;
  } else if (const auto* word = std::get_if<short>(&value)) {
    v.vt = VT_I2;
    v.iVal = *word;
  }
  return v;
}

Value FromVariant(const VARIANT& v) {
  switch (v.vt) {
    case VT_BSTR: return TextOf(v.bstrVal);
    case VT_I4: return v.lVal;
    case VT_I2: return v.iVal;
    case VT_BOOL: return v.boolVal != VARIANT_FALSE;
    default: return std::monostate{};
  }
}

class ByName : public PluginTest {
 protected:
  DISPID IdOf(std::wstring_view name) {
    std::wstring text(name);
    LPOLESTR names[] = {text.data()};
    DISPID id = DISPID_UNKNOWN;
    EXPECT_HRESULT_SUCCEEDED(plugin_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id));
    return id;
  }
  // Arguments in call order; DISPPARAMS takes them last first.
  HRESULT Call(std::wstring_view name, WORD flags, const std::vector<Value>& arguments, VARIANT* result,
               EXCEPINFO* exception = nullptr) {
    std::vector<VARIANT> values;
    for (auto it = arguments.rbegin(); it != arguments.rend(); ++it) values.push_back(ToVariant(*it));
    DISPID putId = DISPID_PROPERTYPUT;
    DISPPARAMS params{values.data(), nullptr, static_cast<UINT>(values.size()), 0};
    if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
      params.rgdispidNamedArgs = &putId;
      params.cNamedArgs = 1;
    }
    UINT argumentError = 0;
    const HRESULT hr =
        plugin_->Invoke(IdOf(name), IID_NULL, LOCALE_USER_DEFAULT, flags, &params, result, exception, &argumentError);
    for (VARIANT& value : values) VariantClear(&value);
    return hr;
  }
};

TEST_F(ByName, TypeInfoIsTheDualInterface) {
  Microsoft::WRL::ComPtr<ITypeInfo> info;
  ASSERT_HRESULT_SUCCEEDED(plugin_->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info));
  TYPEATTR* attr = nullptr;
  ASSERT_HRESULT_SUCCEEDED(info->GetTypeAttr(&attr));
  EXPECT_TRUE(IsEqualGUID(attr->guid, kInterfaceIds[0]));
  info->ReleaseTypeAttr(attr);
  EXPECT_EQ(plugin_->GetTypeInfo(1, LOCALE_USER_DEFAULT, &info), DISP_E_BADINDEX);
}

// One object, one call after the other: each row's result is what the member gives.
TEST_F(ByName, MembersAnswerThroughInvoke) {
  constexpr WORD put = DISPATCH_PROPERTYPUT, get = DISPATCH_PROPERTYGET, call = DISPATCH_METHOD;
  const struct {
    const wchar_t* member;
    WORD flags;
    std::vector<Value> arguments;
    Value expected;
  } script[] = {
      {L"InitializeProperties", call, {L"T1", L"S", 0L}, {}},
      {L"RegstCle", get, {}, L"SOFTWARE\\NOVRA\\Scenarios\\S\\Taches"},
      {L"GetName", call, {}, L"T1"},
      {L"GetWorkingMode", call, {}, 1L},
      {L"GetStatus", call, {}, 0L},
      {L"GetWrapperType", call, {}, 39L},
      {L"IsTrigger", call, {}, false},
      {L"IsActionSupported", call, {1L}, false},
      {L"IsActionSupported", call, {2L}, true},
      {L"Nom", put, {L"T2"}, {}},
      {L"Nom", get, {}, L"T2"},
      {L"Regst", put, {5L}, {}},
      {L"Regst", get, {}, 5L},
      {L"Etat", put, {short{0}}, {}},
      {L"Etat", get, {}, short{0}},
      {L"Rapport", put, {L"r.txt"}, {}},
      {L"Rapport", get, {}, L"r.txt"},
      {L"Scen", put, {L"S2"}, {}},
      {L"Scen", get, {}, L"S2"},
      {L"SetName", call, {L"T3"}, {}},
      {L"Nom", get, {}, L"T3"},
      {L"SetScenario", call, {L"S3"}, {}},
      {L"Scen", get, {}, L"S3"},
      {L"SetRegistrySubKey", call, {L"SOFTWARE\\Y"}, {}},
      {L"RegstCle", get, {}, L"SOFTWARE\\Y"},
      {L"SetReportFilePath", call, {L"y.txt"}, {}},
      {L"Rapport", get, {}, L"y.txt"},
      {L"SetRegistryRoot", call, {7L}, {}},
      {L"Regst", get, {}, 7L},
      {L"SetWorkingMode", call, {1L}, {}},
      {L"Etat", get, {}, short{1}},
      {L"SetLanguage", call, {10000L}, {}},
  };
  for (const auto& step : script) {
    com::UniqueVariant result;
    const std::string trace(std::wstring_view(step.member).begin(), std::wstring_view(step.member).end());
    ASSERT_HRESULT_SUCCEEDED(Call(step.member, step.flags, step.arguments, result.put())) << trace;
    EXPECT_EQ(FromVariant(*result.get()), step.expected) << trace;
  }
  com::UniqueVariant description;
  ASSERT_HRESULT_SUCCEEDED(Call(L"GetTaskDescription", call, {}, description.put()));
  EXPECT_NE(std::get<std::wstring>(FromVariant(*description.get())).find(L"String extraction"), std::wstring::npos);
}

TEST_F(ByName, ObjectsPassByReference) {
  TestDispatch host;
  VARIANT object;
  object.vt = VT_DISPATCH;
  object.pdispVal = &host;
  DISPID putId = DISPID_PROPERTYPUT;
  DISPPARAMS params{&object, &putId, 1, 1};
  ASSERT_HRESULT_SUCCEEDED(plugin_->Invoke(IdOf(L"Bouton"), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUTREF,
                                           &params, nullptr, nullptr, nullptr));
  com::UniqueVariant bouton, picture;
  ASSERT_HRESULT_SUCCEEDED(Call(L"Bouton", DISPATCH_PROPERTYGET, {}, bouton.put()));
  EXPECT_EQ(bouton->vt, VT_DISPATCH);
  EXPECT_EQ(bouton->pdispVal, &host);
  ASSERT_HRESULT_SUCCEEDED(Call(L"GetPicture", DISPATCH_METHOD, {}, picture.put()));
  EXPECT_EQ(picture->vt, VT_DISPATCH);
  EXPECT_NE(picture->pdispVal, nullptr);
  // The object holds `host` as its Bouton: it goes before `host` leaves the stack.
  bouton.put();
  plugin_.Reset();
}

// A failing member reaches a late-bound caller as an exception carrying its error.
TEST_F(ByName, AFailingMemberRaisesItsError) {
  EXCEPINFO exception{};
  EXPECT_EQ(Call(L"SetWorkingMode", DISPATCH_METHOD, {40000L}, nullptr, &exception), DISP_E_EXCEPTION);
  EXPECT_EQ(exception.scode, static_cast<SCODE>(0x800A0006));
  EXPECT_EQ(TextOf(exception.bstrSource), kErrorSource);
  EXPECT_NE(TextOf(exception.bstrDescription), L"");
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
}

}  // namespace
}  // namespace nv::comtest
