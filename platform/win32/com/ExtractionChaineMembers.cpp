// The 39 members of _ExtractionChaine. Each one hands over to the core; an error that
// escapes the core ends the call with its HRESULT and error information.
#include "common/Error.h"
#include "platform/win32/com/Bstr.h"
#include "platform/win32/com/ComIdentity.h"
#include "platform/win32/com/ComResult.h"
#include "platform/win32/com/ErrorInfo.h"
#include "platform/win32/com/ExtractionChaineObject.h"
#include "platform/win32/com/HostObjectDispatch.h"
#include "platform/win32/com/Picture.h"

namespace nv::com {
namespace {

VARIANT_BOOL AsVariantBool(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }

// Arguments passed by reference are read, never written back.
template <typename T>
T Argument(const T* pointer) {
  if (pointer == nullptr) throw RuntimeError(static_cast<std::int32_t>(E_POINTER), u"Invalid pointer");
  return *pointer;
}

Text TextArgument(const BSTR* pointer) { return TextOf(Argument(pointer)); }

}  // namespace

template <typename Body>
HRESULT ExtractionChaineObject::Member(Body&& body) noexcept {
  return Guarded(IID__ExtractionChaine, std::forward<Body>(body));
}

STDMETHODIMP ExtractionChaineObject::get_Nom(BSTR* value) {
  RETURN_HR_IF_NULL(E_POINTER, value);
  *value = nullptr;
  return Member([&] { *value = MakeBstr(core_.Nom).release(); });
}

STDMETHODIMP ExtractionChaineObject::put_Nom(BSTR value) {
  return Member([&] { core_.Nom = TextOf(value); });
}

STDMETHODIMP ExtractionChaineObject::get_Regst(LONG* value) {
  RETURN_HR_IF_NULL(E_POINTER, value);
  *value = core_.Regst;
  return S_OK;
}

STDMETHODIMP ExtractionChaineObject::put_Regst(LONG value) {
  core_.Regst = value;
  return S_OK;
}

STDMETHODIMP ExtractionChaineObject::get_RegstCle(BSTR* value) {
  RETURN_HR_IF_NULL(E_POINTER, value);
  *value = nullptr;
  return Member([&] { *value = MakeBstr(core_.RegstCle).release(); });
}

STDMETHODIMP ExtractionChaineObject::put_RegstCle(BSTR value) {
  return Member([&] { core_.RegstCle = TextOf(value); });
}

STDMETHODIMP ExtractionChaineObject::get_Etat(short* value) {
  RETURN_HR_IF_NULL(E_POINTER, value);
  *value = core_.Etat;
  return S_OK;
}

STDMETHODIMP ExtractionChaineObject::put_Etat(short value) {
  core_.Etat = value;
  return S_OK;
}

STDMETHODIMP ExtractionChaineObject::get_Rapport(BSTR* value) {
  RETURN_HR_IF_NULL(E_POINTER, value);
  *value = nullptr;
  return Member([&] { *value = MakeBstr(core_.Rapport).release(); });
}

STDMETHODIMP ExtractionChaineObject::put_Rapport(BSTR value) {
  return Member([&] { core_.Rapport = TextOf(value); });
}

STDMETHODIMP ExtractionChaineObject::get_Scen(BSTR* value) {
  RETURN_HR_IF_NULL(E_POINTER, value);
  *value = nullptr;
  return Member([&] { *value = MakeBstr(core_.Scen).release(); });
}

STDMETHODIMP ExtractionChaineObject::put_Scen(BSTR value) {
  return Member([&] { core_.Scen = TextOf(value); });
}

STDMETHODIMP ExtractionChaineObject::get_Bouton(IDispatch** value) {
  RETURN_HR_IF_NULL(E_POINTER, value);
  *value = DispatchOf(core_.Bouton);
  if (*value != nullptr) (*value)->AddRef();
  return S_OK;
}

// Slot 14, which the type library does not describe: a write of Bouton all the same.
STDMETHODIMP ExtractionChaineObject::put_Bouton(IDispatch* value) { return putref_Bouton(value); }

STDMETHODIMP ExtractionChaineObject::putref_Bouton(IDispatch* value) {
  return Member([&] { core_.Bouton = WrapHostObject(value); });
}

STDMETHODIMP ExtractionChaineObject::RunT(short data) {
  return Member([&] { core_.RunT(data); });
}

STDMETHODIMP ExtractionChaineObject::put_Run(short data) {
  return Member([&] { core_.Run(data); });
}

STDMETHODIMP ExtractionChaineObject::GetTaskDescription(BSTR* description) {
  RETURN_HR_IF_NULL(E_POINTER, description);
  *description = nullptr;
  return Member([&] { *description = MakeBstr(core_.GetTaskDescription()).release(); });
}

STDMETHODIMP ExtractionChaineObject::Affiche(short* result) {
  RETURN_HR_IF_NULL(E_POINTER, result);
  *result = 0;
  return Member([&] { *result = core_.Affiche(); });
}

STDMETHODIMP ExtractionChaineObject::IsTrigger(VARIANT_BOOL* trigger) {
  RETURN_HR_IF_NULL(E_POINTER, trigger);
  *trigger = AsVariantBool(core_.IsTrigger());
  return S_OK;
}

STDMETHODIMP ExtractionChaineObject::IsActionSupported(LONG* actionType, VARIANT_BOOL* supported) {
  RETURN_HR_IF_NULL(E_POINTER, supported);
  *supported = VARIANT_FALSE;
  return Member([&] { *supported = AsVariantBool(core_.IsActionSupported(Argument(actionType))); });
}

STDMETHODIMP ExtractionChaineObject::ShowWrapper(LONG* workingMode) {
  RETURN_HR_IF_NULL(E_POINTER, workingMode);
  *workingMode = 0;
  return Member([&] { *workingMode = core_.ShowWrapper(); });
}

STDMETHODIMP ExtractionChaineObject::GetPicture(IPictureDisp** picture) {
  RETURN_HR_IF_NULL(E_POINTER, picture);
  *picture = nullptr;
  return Member([&] { *picture = LoadBitmapPicture(L"WRAPPER_PICTURE").Detach(); });
}

STDMETHODIMP ExtractionChaineObject::GetStatus(LONG* status) {
  RETURN_HR_IF_NULL(E_POINTER, status);
  *status = 0;
  return Member([&] { *status = core_.GetStatus(); });
}

STDMETHODIMP ExtractionChaineObject::GetSummary(BSTR* summary) {
  RETURN_HR_IF_NULL(E_POINTER, summary);
  *summary = nullptr;
  return Member([&] { *summary = MakeBstr(core_.GetSummary()).release(); });
}

STDMETHODIMP ExtractionChaineObject::GetTitle(BSTR* title) {
  RETURN_HR_IF_NULL(E_POINTER, title);
  *title = nullptr;
  return Member([&] { *title = MakeBstr(core_.GetTitle()).release(); });
}

STDMETHODIMP ExtractionChaineObject::GetWrapperType(LONG* wrapperType) {
  RETURN_HR_IF_NULL(E_POINTER, wrapperType);
  *wrapperType = core_.GetWrapperType();
  return S_OK;
}

STDMETHODIMP ExtractionChaineObject::GetActions(BSTR* actions) {
  RETURN_HR_IF_NULL(E_POINTER, actions);
  *actions = nullptr;
  return Member([&] { *actions = MakeBstr(core_.GetActions()).release(); });
}

STDMETHODIMP ExtractionChaineObject::GetWorkingMode(LONG* workingMode) {
  RETURN_HR_IF_NULL(E_POINTER, workingMode);
  *workingMode = core_.GetWorkingMode();
  return S_OK;
}

STDMETHODIMP ExtractionChaineObject::GetName(BSTR* name) {
  RETURN_HR_IF_NULL(E_POINTER, name);
  *name = nullptr;
  return Member([&] { *name = MakeBstr(core_.GetName()).release(); });
}

STDMETHODIMP ExtractionChaineObject::SetLanguage(LONG* language) {
  return Member([&] { core_.SetLanguage(Argument(language)); });
}

STDMETHODIMP ExtractionChaineObject::SetName(BSTR* name) {
  return Member([&] { core_.SetName(TextArgument(name)); });
}

STDMETHODIMP ExtractionChaineObject::SetRegistryRoot(LONG* root) {
  return Member([&] { core_.SetRegistryRoot(Argument(root)); });
}

STDMETHODIMP ExtractionChaineObject::SetRegistrySubKey(BSTR* subKey) {
  return Member([&] { core_.SetRegistrySubKey(TextArgument(subKey)); });
}

STDMETHODIMP ExtractionChaineObject::SetReportFilePath(BSTR* path) {
  return Member([&] { core_.SetReportFilePath(TextArgument(path)); });
}

STDMETHODIMP ExtractionChaineObject::SetScenario(BSTR* scenario) {
  return Member([&] { core_.SetScenario(TextArgument(scenario)); });
}

STDMETHODIMP ExtractionChaineObject::SetWorkingMode(LONG* mode) {
  return Member([&] { core_.SetWorkingMode(Argument(mode)); });
}

STDMETHODIMP ExtractionChaineObject::ExecuteTache() {
  return Member([&] { core_.ExecuteTache(); });
}

STDMETHODIMP ExtractionChaineObject::InitializeProperties(BSTR* name, BSTR* scenario, LONG* language) {
  return Member([&] { core_.InitializeProperties(TextArgument(name), TextArgument(scenario), Argument(language)); });
}

}  // namespace nv::com
