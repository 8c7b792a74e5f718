#include "platform/win32/typelib/LibraryCopy.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32/typelib/Check.h"

namespace nv::typelib {
namespace {

using Microsoft::WRL::ComPtr;

UINT PointerSize(SYSKIND kind) { return kind == SYS_WIN64 ? 8 : 4; }

// Our IDL is UTF-8 and widl stores its bytes as they are, while a library's strings are
// read in the ANSI code page: read them again as UTF-8 so that the new library holds the
// characters that were written.
std::wstring FromIdlText(BSTR text) {
  if (text == nullptr) return {};
  const int length = static_cast<int>(SysStringLen(text));
  if (length == 0) return {};
  const int bytes = WideCharToMultiByte(CP_ACP, 0, text, length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_ACP, 0, text, length, narrow.data(), bytes, nullptr, nullptr);
  const int wide = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, narrow.data(), bytes, nullptr, 0);
  if (wide <= 0) return std::wstring(text, static_cast<std::size_t>(length));
  std::wstring result(static_cast<std::size_t>(wide), L'\0');
  MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, narrow.data(), bytes, result.data(), wide);
  return result;
}

struct Documentation {
  Bstr name;
  Bstr doc;
  DWORD helpContext = 0;
};

class LibraryCopier {
 public:
  LibraryCopier(ITypeLib* source, ICreateTypeLib2* target, SYSKIND targetKind, const MemberRules& rules)
      : source_(source), target_(target), targetKind_(targetKind), rules_(rules) {}

  void Run() {
    CopyLibraryAttributes();
    const UINT count = source_->GetTypeInfoCount();
    for (UINT i = 0; i < count; ++i) CreateType(i);
    for (UINT i = 0; i < count; ++i) FillType(i);
    for (auto& created : created_) Check(created->LayOut(), "LayOut");
  }

 private:
  void CopyLibraryAttributes() {
    TLIBATTR* attr = nullptr;
    Check(source_->GetLibAttr(&attr), "GetLibAttr");
    const TLIBATTR copy = *attr;
    source_->ReleaseTLibAttr(attr);
    libGuid_ = copy.guid;
    Documentation doc;
    Check(source_->GetDocumentation(-1, doc.name.Out(), doc.doc.Out(), &doc.helpContext, nullptr), "library documentation");
    Check(target_->SetName(doc.name.Get()), "SetName");
    Check(target_->SetGuid(copy.guid), "SetGuid");
    Check(target_->SetVersion(copy.wMajorVerNum, copy.wMinorVerNum), "SetVersion");
    Check(target_->SetLcid(copy.lcid), "SetLcid");
    Check(target_->SetLibFlags(copy.wLibFlags), "SetLibFlags");
    if (doc.doc.Get() != nullptr) {
      std::wstring text = FromIdlText(doc.doc.Get());
      Check(target_->SetDocString(text.data()), "SetDocString");
    }
    if (doc.helpContext != 0) Check(target_->SetHelpContext(doc.helpContext), "SetHelpContext");
  }

  // A dual interface is read from its vtable side, where the members carry their slots.
  ComPtr<ITypeInfo> SourceType(UINT index) {
    ComPtr<ITypeInfo> info;
    Check(source_->GetTypeInfo(index, &info), "GetTypeInfo");
    const TypeAttrHolder attr(info.Get());
    if (attr->typekind == TKIND_DISPATCH && (attr->wTypeFlags & TYPEFLAG_FDUAL)) {
      HREFTYPE vtableSide = 0;
      Check(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &vtableSide), "dual interface's vtable side");
      ComPtr<ITypeInfo> side;
      Check(info->GetRefTypeInfo(vtableSide, &side), "GetRefTypeInfo");
      return side;
    }
    return info;
  }

  void CreateType(UINT index) {
    const ComPtr<ITypeInfo> info = SourceType(index);
    const TypeAttrHolder attr(info.Get());
    Documentation doc;
    Check(source_->GetDocumentation(static_cast<INT>(index), doc.name.Out(), nullptr, nullptr, nullptr), "type name");
    ComPtr<ICreateTypeInfo> created;
    Check(target_->CreateTypeInfo(doc.name.Get(), attr->typekind, &created), "CreateTypeInfo");
    created_.push_back(created);
  }

  void FillType(UINT index) {
    const ComPtr<ITypeInfo> info = SourceType(index);
    ICreateTypeInfo* into = created_[index].Get();
    const TypeAttrHolder attr(info.Get());
    Documentation doc;
    Check(source_->GetDocumentation(static_cast<INT>(index), doc.name.Out(), doc.doc.Out(), &doc.helpContext, nullptr),
          "type documentation");
    Check(into->SetGuid(attr->guid), "SetGuid");
    Check(into->SetVersion(attr->wMajorVerNum, attr->wMinorVerNum), "SetVersion");
    if (doc.doc.Get() != nullptr) {
      std::wstring text = FromIdlText(doc.doc.Get());
      Check(into->SetDocString(text.data()), "SetDocString");
    }
    if (doc.helpContext != 0) Check(into->SetHelpContext(doc.helpContext), "SetHelpContext");
    for (UINT i = 0; i < attr->cImplTypes; ++i) {
      HREFTYPE sourceRef = 0;
      Check(info->GetRefTypeOfImplType(i, &sourceRef), "GetRefTypeOfImplType");
      Check(into->AddImplType(i, Reference(into, info.Get(), sourceRef)), "AddImplType");
      INT flags = 0;
      Check(info->GetImplTypeFlags(i, &flags), "GetImplTypeFlags");
      if (flags != 0) Check(into->SetImplTypeFlags(i, flags), "SetImplTypeFlags");
    }
    // Flags after the base: a dual interface needs IDispatch as its base when flagged.
    Check(into->SetTypeFlags(attr->wTypeFlags), "SetTypeFlags");
    if (attr->cVars != 0) throw Failure("variables are not copied", E_NOTIMPL);
    CopyFunctions(info.Get(), into, attr->typekind, doc.name.Get());
  }

  void CopyFunctions(ITypeInfo* info, ICreateTypeInfo* into, TYPEKIND kind, BSTR typeName) {
    const TypeAttrHolder attr(info);
    std::vector<Member> members;
    for (UINT i = 0; i < attr->cFuncs; ++i) {
      const FuncDescHolder fd(info, i);
      Bstr name;
      Check(info->GetDocumentation(fd->memid, name.Out(), nullptr, nullptr, nullptr), "member name");
      members.push_back({i, name.Get(), fd->invkind});
    }
    members = Arrange(typeName, std::move(members), rules_);
    UINT index = 0;
    for (const Member& member : members) CopyFunction(info, into, kind, member.sourceIndex, index++);
  }

  void CopyFunction(ITypeInfo* info, ICreateTypeInfo* into, TYPEKIND kind, UINT sourceIndex, UINT index) {
    const FuncDescHolder fd(info, sourceIndex);
    std::deque<TYPEDESC> arena;
    std::vector<ELEMDESC> params(static_cast<std::size_t>(fd->cParams));
    for (std::size_t p = 0; p < params.size(); ++p) {
      params[p] = Element(into, info, fd->lprgelemdescParam[p], arena);
    }
    FUNCDESC copy = *fd;
    copy.lprgscode = nullptr;
    copy.cScodes = 0;
    copy.lprgelemdescParam = params.empty() ? nullptr : params.data();
    copy.elemdescFunc = Element(into, info, fd->elemdescFunc, arena);
    // oleaut32 hands out offsets in this process's pointer size, whatever the library's
    // platform, and writes them as given, in the new library's pointer size.
    const UINT slot = static_cast<UINT>(fd->oVft) / sizeof(void*);
    copy.oVft = kind == TKIND_INTERFACE ? static_cast<SHORT>(slot * PointerSize(targetKind_)) : 0;
    Check(into->AddFuncDesc(index, &copy), "AddFuncDesc");

    // A property's write has no name for its value; every other parameter keeps its own.
    const UINT wanted = static_cast<UINT>(fd->cParams) +
                        ((fd->invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) ? 0u : 1u);
    std::vector<BSTR> names(wanted + 1, nullptr);
    UINT found = 0;
    Check(info->GetNames(fd->memid, names.data(), static_cast<UINT>(names.size()), &found), "GetNames");
    const UINT count = found < wanted ? found : wanted;
    const HRESULT named = into->SetFuncAndParamNames(index, names.data(), count);
    for (BSTR name : names) SysFreeString(name);
    Check(named, "SetFuncAndParamNames");

    Bstr doc;
    DWORD helpContext = 0;
    Check(info->GetDocumentation(fd->memid, nullptr, doc.Out(), &helpContext, nullptr), "member documentation");
    if (doc.Get() != nullptr) {
      std::wstring text = FromIdlText(doc.Get());
      Check(into->SetFuncDocString(index, text.data()), "SetFuncDocString");
    }
    if (helpContext != 0) Check(into->SetFuncHelpContext(index, helpContext), "SetFuncHelpContext");
  }

  ELEMDESC Element(ICreateTypeInfo* into, ITypeInfo* info, const ELEMDESC& element, std::deque<TYPEDESC>& arena) {
    if (element.paramdesc.wParamFlags & PARAMFLAG_FHASDEFAULT) throw Failure("default values are not copied", E_NOTIMPL);
    ELEMDESC copy = element;
    copy.tdesc = Type(into, info, element.tdesc, arena);
    copy.paramdesc.pparamdescex = nullptr;
    return copy;
  }

  TYPEDESC Type(ICreateTypeInfo* into, ITypeInfo* info, const TYPEDESC& type, std::deque<TYPEDESC>& arena) {
    TYPEDESC copy = type;
    switch (type.vt) {
      case VT_PTR:
      case VT_SAFEARRAY:
        arena.push_back(Type(into, info, *type.lptdesc, arena));
        copy.lptdesc = &arena.back();
        break;
      case VT_USERDEFINED: {
        // Wine's writer cannot refer to an imported alias that has no identifier (stdole2's
        // IPictureDisp): the new library refers to the type the alias names instead.
        ComPtr<ITypeInfo> referenced;
        Check(info->GetRefTypeInfo(type.hreftype, &referenced), "GetRefTypeInfo");
        if (!IsLocal(referenced.Get())) {
          const TypeAttrHolder attr(referenced.Get());
          if (attr->typekind == TKIND_ALIAS && IsEqualGUID(attr->guid, GUID_NULL)) {
            return Type(into, referenced.Get(), attr->tdescAlias, arena);
          }
        }
        copy.hreftype = Reference(into, info, type.hreftype);
        break;
      }
      case VT_CARRAY:
        throw Failure("arrays are not copied", E_NOTIMPL);
      default:
        break;
    }
    return copy;
  }

  // A reference to a type of this library goes to its copy; one to another library
  // (stdole2) is kept as an import.
  // The type's index in the source library when it belongs to it.
  std::optional<UINT> LocalIndex(ITypeInfo* type) {
    ComPtr<ITypeLib> library;
    UINT index = 0;
    Check(type->GetContainingTypeLib(&library, &index), "GetContainingTypeLib");
    TLIBATTR* attr = nullptr;
    Check(library->GetLibAttr(&attr), "GetLibAttr");
    const bool local = IsEqualGUID(attr->guid, libGuid_) != FALSE;
    library->ReleaseTLibAttr(attr);
    return local ? std::optional<UINT>(index) : std::nullopt;
  }
  bool IsLocal(ITypeInfo* type) { return LocalIndex(type).has_value(); }

  HREFTYPE Reference(ICreateTypeInfo* into, ITypeInfo* info, HREFTYPE sourceRef) {
    ComPtr<ITypeInfo> referenced;
    Check(info->GetRefTypeInfo(sourceRef, &referenced), "GetRefTypeInfo");
    ComPtr<ITypeInfo> target = referenced;
    if (const auto index = LocalIndex(referenced.Get())) Check(created_.at(*index).As(&target), "created type's ITypeInfo");
    HREFTYPE result = 0;
    Check(into->AddRefTypeInfo(target.Get(), &result), "AddRefTypeInfo");
    return result;
  }

  ITypeLib* source_;
  ICreateTypeLib2* target_;
  SYSKIND targetKind_;
  const MemberRules& rules_;
  GUID libGuid_{};
  std::vector<ComPtr<ICreateTypeInfo>> created_;
};

}  // namespace

void CopyLibrary(ITypeLib* source, ICreateTypeLib2* target, SYSKIND targetKind, const MemberRules& rules) {
  LibraryCopier(source, target, targetKind, rules).Run();
}

}  // namespace nv::typelib
