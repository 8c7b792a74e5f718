// call: any member of the plug-in by name, through IDispatch, as a late-bound host or a
// script calls it. The arguments are typed by the member's description in the type
// library, so that by-reference parameters receive exactly what they expect.
#include <windows.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "common/Error.h"
#include "common/Utf.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "platform/win32/com/Bstr.h"
#include "platform/win32/com/CallFailure.h"
#include "platform/win32/com/ErrorInfo.h"
#include "platform/win32/com/UniqueVariant.h"
#include "platform/win32/com/VariantValues.h"
#include "platform/win32/nvhost/NvhostCommands.h"

namespace nv::nvhost {
namespace {

using com::CheckCall;
using com::UniqueVariant;
using Microsoft::WRL::ComPtr;

constexpr const char* kUsage = "call [--task SCENARIO TASK] [--lang fr|en] MEMBER [ARGS...]";

// A member's description, released with it.
class FuncDescription {
 public:
  FuncDescription(ComPtr<ITypeInfo> info, FUNCDESC* description) : info_(std::move(info)), description_(description) {}
  ~FuncDescription() {
    if (description_ != nullptr) info_->ReleaseFuncDesc(description_);
  }
  FuncDescription(FuncDescription&& other) noexcept
      : info_(std::move(other.info_)), description_(std::exchange(other.description_, nullptr)) {}
  FuncDescription(const FuncDescription&) = delete;
  FuncDescription& operator=(const FuncDescription&) = delete;
  FuncDescription& operator=(FuncDescription&&) = delete;
  const FUNCDESC& operator*() const noexcept { return *description_; }
  const FUNCDESC* operator->() const noexcept { return description_; }

 private:
  ComPtr<ITypeInfo> info_;
  FUNCDESC* description_;
};

std::vector<FuncDescription> DescriptionsOf(IDispatch& object, DISPID member) {
  ComPtr<ITypeInfo> info;
  CheckCall(object.GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), u"IDispatch.GetTypeInfo");
  TYPEATTR* attributes = nullptr;
  CheckCall(info->GetTypeAttr(&attributes), u"ITypeInfo.GetTypeAttr");
  const WORD count = attributes->cFuncs;
  info->ReleaseTypeAttr(attributes);
  std::vector<FuncDescription> found;
  for (UINT index = 0; index < count; ++index) {
    FUNCDESC* description = nullptr;
    if (FAILED(info->GetFuncDesc(index, &description))) continue;
    FuncDescription held(info, description);
    if (held->memid == member) found.push_back(std::move(held));
  }
  return found;
}

// The kind of call that the words ask for: a read or a method without arguments, a write
// with one argument, a method with its arguments.
const FUNCDESC* Choose(const std::vector<FuncDescription>& candidates, std::size_t argumentCount) {
  const FUNCDESC* chosen = nullptr;
  for (const FuncDescription& candidate : candidates) {
    const auto parameters = static_cast<std::size_t>(candidate->cParams);
    const bool put = candidate->invkind == INVOKE_PROPERTYPUT;
    if (candidate->invkind == INVOKE_PROPERTYPUTREF) continue;  // an object cannot be typed in
    if (put && parameters == argumentCount && argumentCount == 1) return &*candidate;
    if (!put && parameters == argumentCount && chosen == nullptr) chosen = &*candidate;
  }
  return chosen;
}

// Room for the by-reference arguments, which must stay where they are during the call.
struct ArgumentStore {
  std::deque<UniqueVariant> values;
  std::deque<VARIANT> passed;
};

VARTYPE BaseType(const TYPEDESC& type, bool& byReference) {
  byReference = type.vt == VT_PTR;
  const TYPEDESC& target = byReference ? *type.lptdesc : type;
  if (target.vt == VT_USERDEFINED) return VARTYPE{VT_VARIANT};
  return target.vt;
}

VARIANT MakeArgument(const std::string& word, const ELEMDESC& parameter, ArgumentStore& store) {
  bool byReference = false;
  const VARTYPE type = BaseType(parameter.tdesc, byReference);
  UniqueVariant& value = store.values.emplace_back(com::VariantFromText(FromUtf8(word)));
  if (type != VT_VARIANT && type != VT_BSTR) {
    const HRESULT hr = VariantChangeTypeEx(value.get(), value.get(), LOCALE_USER_DEFAULT, 0, type);
    if (FAILED(hr)) throw UsageError("'" + word + "' does not fit the member's parameter");
  }
  VARIANT passed;
  VariantInit(&passed);
  if (!byReference) {
    passed = *value.get();  // still owned by the store
    return passed;
  }
  if (type == VT_VARIANT) {
    V_VT(&passed) = VT_VARIANT | VT_BYREF;
    V_VARIANTREF(&passed) = value.get();
  } else {
    V_VT(&passed) = static_cast<VARTYPE>(type | VT_BYREF);
    V_BYREF(&passed) = &value.get()->lVal;  // the union's start, whatever the type
  }
  return passed;
}

std::string ResultText(const VARIANT& result) {
  switch (V_VT(&result)) {
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return V_UNKNOWN(&result) == nullptr ? "Nothing" : "(object)";
    default:
      return ToUtf8(com::TextOfVariant(result));
  }
}

}  // namespace

int RunCallCommand(Session& session, const Words& words) {
  if (PrintedHelp(session, words, kUsage)) return 0;
  // The options come before MEMBER; everything after it is the member's.
  std::size_t next = 0;
  Arguments task;
  while (next < words.size() && words[next].rfind("--", 0) == 0) {
    if (words[next] == "--task" && next + 2 < words.size()) {
      task.positional = {words[next + 1], words[next + 2]};
      next += 3;
    } else if (words[next] == "--lang" && next + 1 < words.size()) {
      task.options["--lang"] = {words[next + 1]};
      next += 2;
    } else {
      throw UsageError("unknown option or missing value: " + words[next]);
    }
  }
  if (next >= words.size()) throw UsageError("name the member to call");
  const Words member(words.begin() + static_cast<std::ptrdiff_t>(next), words.end());

  const std::unique_ptr<PluginClient> plugin = session.CreatePlugin();
  if (!task.positional.empty()) InitializeForTask(*plugin, task);
  IDispatch& object = DispatchOf(*plugin);

  const Text memberName = FromUtf8(member[0]);
  std::wstring name(memberName.begin(), memberName.end());
  LPOLESTR names[] = {name.data()};
  DISPID id = 0;
  if (FAILED(object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id))) {
    throw UsageError("the plug-in has no member '" + member[0] + "'");
  }
  const std::vector<FuncDescription> candidates = DescriptionsOf(object, id);
  const std::size_t argumentCount = member.size() - 1;
  const FUNCDESC* chosen = Choose(candidates, argumentCount);
  if (chosen == nullptr) {
    throw UsageError(member[0] + " does not take " + std::to_string(argumentCount) + " argument(s)");
  }

  ArgumentStore store;
  std::vector<VARIANT> arguments(argumentCount);
  for (std::size_t index = 0; index < argumentCount; ++index) {
    // DISPPARAMS lists the arguments last first.
    arguments[argumentCount - 1 - index] = MakeArgument(member[index + 1], chosen->lprgelemdescParam[index], store);
  }
  DISPID putId = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(argumentCount), 0};
  WORD flags = DISPATCH_METHOD;
  if (chosen->invkind == INVOKE_PROPERTYGET) flags = DISPATCH_PROPERTYGET;
  if (chosen->invkind == INVOKE_PROPERTYPUT) {
    flags = DISPATCH_PROPERTYPUT;
    parameters.rgdispidNamedArgs = &putId;
    parameters.cNamedArgs = 1;
  }
  UniqueVariant result;
  EXCEPINFO exception{};
  UINT argumentError = 0;
  const HRESULT hr = object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                   flags == DISPATCH_PROPERTYPUT ? nullptr : result.get(), &exception, &argumentError);
  if (hr == DISP_E_EXCEPTION) {
    const com::UniqueBstr description(exception.bstrDescription);
    const com::UniqueBstr source(exception.bstrSource);
    const com::UniqueBstr help(exception.bstrHelpFile);
    // The automation runtime's own errors read by their runtime number, as natively.
    const HRESULT code = exception.scode != 0 ? exception.scode : static_cast<HRESULT>(exception.wCode);
    throw RuntimeError(com::RuntimeNumberOf(code), com::TextOf(description.get()));
  }
  CheckCall(hr, u"IDispatch.Invoke");
  // A write, or a member without a result, prints nothing.
  if (V_VT(result.get()) != VT_EMPTY) session.Out() << ResultText(*result.get()) << "\n";
  return 0;
}

}  // namespace nv::nvhost
