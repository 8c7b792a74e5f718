// The type library as a host reads it: the library's identity, every member of
// _ExtractionChaine at its slot with the table's dispatch identifier and parameters, the
// slot left undescribed, the event interface and the class.
#include <gtest/gtest.h>
#include <wrl/client.h>

#include <optional>
#include <string>

#include "platform/win32/com/Bstr.h"
#include "platform/win32/com/WindowsSdk.h"
#include "tests/com/ComServer.h"
#include "tests/com/InterfaceTable.h"

namespace nv::comtest {
namespace {

using Microsoft::WRL::ComPtr;

std::string Narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }

std::wstring TypeName(ITypeInfo* info) {
  com::UniqueBstr name;
  info->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
  return name.get() ? name.get() : L"";
}

std::string TypeText(ITypeInfo* info, const TYPEDESC& type) {
  switch (type.vt) {
    case VT_PTR: return TypeText(info, *type.lptdesc) + "*";
    case VT_BSTR: return "BSTR";
    case VT_I4: return "long";
    case VT_I2: return "short";
    case VT_BOOL: return "VARIANT_BOOL";
    case VT_DISPATCH: return "IDispatch*";
    case VT_USERDEFINED: {
      ComPtr<ITypeInfo> referenced;
      if (FAILED(info->GetRefTypeInfo(type.hreftype, &referenced))) return "?";
      return Narrow(TypeName(referenced.Get()));
    }
    default: return "vt" + std::to_string(type.vt);
  }
}

std::string ParameterText(ITypeInfo* info, const ELEMDESC& parameter) {
  std::string flags;
  const USHORT bits = parameter.paramdesc.wParamFlags;
  for (const auto& [flag, word] : {std::pair{PARAMFLAG_FIN, "in"}, {PARAMFLAG_FOUT, "out"}, {PARAMFLAG_FRETVAL, "retval"}}) {
    if (bits & flag) flags += (flags.empty() ? "" : ",") + std::string(word);
  }
  return flags + " " + TypeText(info, parameter.tdesc);
}

class TypeLibrary : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_HRESULT_SUCCEEDED(LoadTypeLibEx(ServerPath().c_str(), REGKIND_NONE, &library_));
    ComPtr<ITypeInfo> dispatchSide;
    ASSERT_HRESULT_SUCCEEDED(library_->GetTypeInfoOfGuid(kInterfaceIds[0], &dispatchSide));
    HREFTYPE vtableSide = 0;
    ASSERT_HRESULT_SUCCEEDED(dispatchSide->GetRefTypeOfImplType(static_cast<UINT>(-1), &vtableSide));
    ASSERT_HRESULT_SUCCEEDED(dispatchSide->GetRefTypeInfo(vtableSide, &interface_));
  }

  std::optional<UINT> FindMember(MEMBERID id, INVOKEKIND kind) {
    TYPEATTR* attr = nullptr;
    interface_->GetTypeAttr(&attr);
    const UINT count = attr->cFuncs;
    interface_->ReleaseTypeAttr(attr);
    for (UINT i = 0; i < count; ++i) {
      FUNCDESC* desc = nullptr;
      interface_->GetFuncDesc(i, &desc);
      const bool match = desc->memid == id && desc->invkind == kind;
      interface_->ReleaseFuncDesc(desc);
      if (match) return i;
    }
    return std::nullopt;
  }

  ComPtr<ITypeLib> library_;
  ComPtr<ITypeInfo> interface_;
};

TEST_F(TypeLibrary, NamesItselfAndItsVersion) {
  com::UniqueBstr name, help;
  ASSERT_HRESULT_SUCCEEDED(library_->GetDocumentation(-1, name.put(), help.put(), nullptr, nullptr));
  EXPECT_STREQ(name.get(), L"NVExtractionChaine");
  EXPECT_STREQ(help.get(), L"NOVRA 6.0 ( Extraction Cha\u00EEne )");
  TLIBATTR* attr = nullptr;
  ASSERT_HRESULT_SUCCEEDED(library_->GetLibAttr(&attr));
  EXPECT_TRUE(IsEqualGUID(attr->guid, kLibraryId));
  EXPECT_EQ(attr->wMajorVerNum, 1);
  EXPECT_EQ(attr->wMinorVerNum, 2);
  EXPECT_EQ(attr->syskind, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
  library_->ReleaseTLibAttr(attr);
}

// The table slot by slot: member, kind, dispatch id, vtable offset and parameters.
TEST_F(TypeLibrary, DescribesEveryMemberAtItsSlot) {
  int described = 0;
  for (const TableSlot& row : InterfaceTable()) {
    SCOPED_TRACE("slot " + std::to_string(row.slot) + " " + Narrow(std::wstring(row.name)));
    const std::optional<UINT> index = FindMember(row.dispid, row.kind);
    if (!row.described) {
      EXPECT_FALSE(index.has_value()) << "an undescribed slot is in the library";
      continue;
    }
    ++described;
    ASSERT_TRUE(index.has_value());
    FUNCDESC* desc = nullptr;
    ASSERT_HRESULT_SUCCEEDED(interface_->GetFuncDesc(*index, &desc));
    EXPECT_EQ(desc->oVft, static_cast<SHORT>((6 + row.slot) * sizeof(void*)));
    EXPECT_EQ(desc->funckind, FUNC_PUREVIRTUAL);
    EXPECT_EQ(desc->elemdescFunc.tdesc.vt, VT_HRESULT);
    com::UniqueBstr name;
    interface_->GetDocumentation(desc->memid, name.put(), nullptr, nullptr, nullptr);
    EXPECT_EQ(std::wstring_view(name.get()), row.name);
    ASSERT_EQ(static_cast<std::size_t>(desc->cParams), row.parameters.size());
    for (std::size_t p = 0; p < row.parameters.size(); ++p) {
      EXPECT_EQ(ParameterText(interface_.Get(), desc->lprgelemdescParam[p]), row.parameters[p]) << "parameter " << p;
    }
    interface_->ReleaseFuncDesc(desc);
  }
  TYPEATTR* attr = nullptr;
  ASSERT_HRESULT_SUCCEEDED(interface_->GetTypeAttr(&attr));
  EXPECT_EQ(attr->cFuncs, described);
  EXPECT_EQ(attr->wTypeFlags & TYPEFLAG_FDUAL, TYPEFLAG_FDUAL);
  interface_->ReleaseTypeAttr(attr);
}

// Listed between Affiche and IsTrigger, called at slot 38.
TEST_F(TypeLibrary, ListsExecuteTacheAfterAffiche) {
  const auto affiche = FindMember(0x60030007, INVOKE_FUNC);
  const auto execute = FindMember(0x6003001F, INVOKE_FUNC);
  const auto trigger = FindMember(0x60030009, INVOKE_FUNC);
  ASSERT_TRUE(affiche && execute && trigger);
  EXPECT_EQ(*execute, *affiche + 1);
  EXPECT_EQ(*trigger, *execute + 1);
}

TEST_F(TypeLibrary, DescribesTheEventsAndTheClass) {
  ComPtr<ITypeInfo> events;
  ASSERT_HRESULT_SUCCEEDED(library_->GetTypeInfoOfGuid(kEventIds[0], &events));
  EXPECT_EQ(TypeName(events.Get()), L"__ExtractionChaine");
  for (const auto& [name, id] : {std::pair{L"Progress", 1}, {L"Complete", 2}}) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(name)};
    MEMBERID found = MEMBERID_NIL;
    EXPECT_HRESULT_SUCCEEDED(events->GetIDsOfNames(names, 1, &found));
    EXPECT_EQ(found, id) << Narrow(name);
  }
  TYPEATTR* attr = nullptr;
  ASSERT_HRESULT_SUCCEEDED(events->GetTypeAttr(&attr));
  EXPECT_EQ(attr->typekind, TKIND_DISPATCH);
  EXPECT_EQ(attr->wTypeFlags & TYPEFLAG_FDUAL, 0);
  events->ReleaseTypeAttr(attr);

  ComPtr<ITypeInfo> coclass;
  ASSERT_HRESULT_SUCCEEDED(library_->GetTypeInfoOfGuid(kClassId, &coclass));
  EXPECT_EQ(TypeName(coclass.Get()), L"ExtractionChaine");
  ASSERT_HRESULT_SUCCEEDED(coclass->GetTypeAttr(&attr));
  EXPECT_TRUE(attr->wTypeFlags & TYPEFLAG_FCANCREATE);
  ASSERT_EQ(attr->cImplTypes, 2);
  coclass->ReleaseTypeAttr(attr);
  const std::pair<const wchar_t*, INT> expected[] = {
      {L"_ExtractionChaine", IMPLTYPEFLAG_FDEFAULT},
      {L"__ExtractionChaine", IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE},
  };
  for (UINT i = 0; i < 2; ++i) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> implemented;
    INT flags = 0;
    ASSERT_HRESULT_SUCCEEDED(coclass->GetRefTypeOfImplType(i, &reference));
    ASSERT_HRESULT_SUCCEEDED(coclass->GetRefTypeInfo(reference, &implemented));
    ASSERT_HRESULT_SUCCEEDED(coclass->GetImplTypeFlags(i, &flags));
    EXPECT_EQ(TypeName(implemented.Get()), expected[i].first);
    EXPECT_EQ(flags, expected[i].second);
  }
}

}  // namespace
}  // namespace nv::comtest
