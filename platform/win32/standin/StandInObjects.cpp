#include "platform/win32/standin/StandInObjects.h"

#include "common/Utf.h"
#include "platform/win32/com/Bstr.h"
#include "platform/win32/com/ErrorInfo.h"
#include "platform/win32/com/HostObjectDispatch.h"
#include "platform/win32/com/VariantValues.h"
#include "platform/win32/standin/StandInCore.h"

namespace nv::standin {
namespace {

using com::Guarded;
using com::MakeBstr;
using com::TextOf;
using com::TextOfVariant;
using com::UniqueVariant;

HRESULT GiveText(BSTR* out, const Text& text) {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return Guarded(IID_IDispatch, [&] { *out = MakeBstr(text).release(); });
}

HRESULT GiveLong(LONG* out, std::int32_t value) {
  if (out == nullptr) return E_POINTER;
  *out = value;
  return S_OK;
}

// An [out, retval] VARIANT: whatever it held is not ours to clear.
void Return(VARIANT* out, UniqueVariant value) {
  if (out != nullptr) value.MoveTo(out);
}

// An [in, out] VARIANT: the caller's value is replaced.
void Replace(VARIANT* inOut, UniqueVariant value) {
  VariantClear(inOut);
  value.MoveTo(inOut);
}

}  // namespace

// --- VariablesService ------------------------------------------------------------------

VariablesObject::VariablesObject() {
  Registry& registry = AttachStandInCore();
  variables_ = std::make_unique<VariablesStandIn>(registry, CurrentLanguage());
}

STDMETHODIMP VariablesObject::get_ScenarioName(BSTR* value) { return GiveText(value, scenario_); }
STDMETHODIMP VariablesObject::put_ScenarioName(BSTR value) {
  return Guarded(IID_IVariablesService, [&] { scenario_ = TextOf(value); });
}
STDMETHODIMP VariablesObject::get_RegistryRoot(LONG* value) { return GiveLong(value, root_); }
STDMETHODIMP VariablesObject::put_RegistryRoot(LONG value) {
  root_ = value;
  return S_OK;
}
STDMETHODIMP VariablesObject::get_RegistrySubKey(BSTR* value) { return GiveText(value, subKey_); }
STDMETHODIMP VariablesObject::put_RegistrySubKey(BSTR value) {
  return Guarded(IID_IVariablesService, [&] { subKey_ = TextOf(value); });
}

STDMETHODIMP VariablesObject::GetVariableValue(VARIANT* scenario, VARIANT* name, VARIANT* value) {
  if (scenario == nullptr || name == nullptr || value == nullptr) return E_POINTER;
  VariantInit(value);
  return Guarded(IID_IVariablesService, [&] {
    Return(value, com::VariantFromValue(variables_->GetVariableValue(TextOfVariant(*scenario), TextOfVariant(*name))));
  });
}

// The reserved argument is the host's own business; the stand-in ignores it.
STDMETHODIMP VariablesObject::SetVariableValue(VARIANT* scenario, VARIANT* name, VARIANT*, VARIANT* value) {
  if (scenario == nullptr || name == nullptr || value == nullptr) return E_POINTER;
  return Guarded(IID_IVariablesService, [&] {
    variables_->SetVariableValue(TextOfVariant(*scenario), TextOfVariant(*name), TextOfVariant(*value));
  });
}

// --- ReportWriter -----------------------------------------------------------------------

ReportWriterObject::ReportWriterObject() : writer_(WriteToStandardError) { AttachStandInCore(); }

STDMETHODIMP ReportWriterObject::get_ReportFilePath(VARIANT* value) {
  if (value == nullptr) return E_POINTER;
  VariantInit(value);
  return Guarded(IID_IReportWriter, [&] { Return(value, com::VariantFromText(path_)); });
}
STDMETHODIMP ReportWriterObject::put_ReportFilePath(VARIANT value) {
  return Guarded(IID_IReportWriter, [&] {
    path_ = TextOfVariant(value);
    writer_.SetReportFilePath(path_);
  });
}
STDMETHODIMP ReportWriterObject::get_ScenarioName(VARIANT* value) {
  if (value == nullptr) return E_POINTER;
  VariantInit(value);
  return Guarded(IID_IReportWriter, [&] { Return(value, com::VariantFromText(scenario_)); });
}
STDMETHODIMP ReportWriterObject::put_ScenarioName(VARIANT value) {
  return Guarded(IID_IReportWriter, [&] {
    scenario_ = TextOfVariant(value);
    writer_.SetScenarioName(scenario_);
  });
}

// The button is the host's own object: the stand-in only checks that it came along.
STDMETHODIMP ReportWriterObject::AddReportLine(BSTR* line, IDispatch** button, LONG* level) {
  if (line == nullptr || button == nullptr || level == nullptr) return E_POINTER;
  return Guarded(IID_IReportWriter,
                 [&] { writer_.AddReportLine(TextOf(*line), com::WrapHostObject(*button), *level); });
}

// --- WrapperCatalog ---------------------------------------------------------------------

WrapperCatalogObject::WrapperCatalogObject() : catalog_((AttachStandInCore(), CurrentLanguage())) {}

STDMETHODIMP WrapperCatalogObject::GetWrapperTitle(SHORT* wrapperType, BSTR* title) {
  if (wrapperType == nullptr || title == nullptr) return E_POINTER;
  *title = nullptr;
  return Guarded(IID_IWrapperCatalog, [&] { *title = MakeBstr(catalog_.GetWrapperTitle(*wrapperType)).release(); });
}

STDMETHODIMP WrapperCatalogObject::GetWrapperSummary(SHORT* wrapperType, BSTR* summary) {
  if (wrapperType == nullptr || summary == nullptr) return E_POINTER;
  *summary = nullptr;
  return Guarded(IID_IWrapperCatalog,
                 [&] { *summary = MakeBstr(catalog_.GetWrapperSummary(*wrapperType)).release(); });
}

// --- ActionsEditor ----------------------------------------------------------------------

ActionsEditorObject::ActionsEditorObject() {
  Registry& registry = AttachStandInCore();
  prompt_ = MakeActionPrompt(CurrentLanguage());
  editor_ = std::make_unique<RegistryActionsEditor>(registry, CurrentLanguage(), *prompt_);
}

STDMETHODIMP ActionsEditorObject::get_ScenarioName(BSTR* value) { return GiveText(value, scenario_); }
STDMETHODIMP ActionsEditorObject::put_ScenarioName(BSTR value) {
  return Guarded(IID_IActionsEditor, [&] {
    scenario_ = TextOf(value);
    editor_->SetScenarioName(scenario_);
  });
}
STDMETHODIMP ActionsEditorObject::get_TaskName(BSTR* value) { return GiveText(value, task_); }
STDMETHODIMP ActionsEditorObject::put_TaskName(BSTR value) {
  return Guarded(IID_IActionsEditor, [&] {
    task_ = TextOf(value);
    editor_->SetTaskName(task_);
  });
}
STDMETHODIMP ActionsEditorObject::get_RegistryRoot(LONG* value) { return GiveLong(value, root_); }
STDMETHODIMP ActionsEditorObject::put_RegistryRoot(LONG value) {
  return Guarded(IID_IActionsEditor, [&] {
    root_ = value;
    editor_->SetRegistryRoot(value);
  });
}
STDMETHODIMP ActionsEditorObject::get_RegistrySubKey(BSTR* value) { return GiveText(value, subKey_); }
STDMETHODIMP ActionsEditorObject::put_RegistrySubKey(BSTR value) {
  return Guarded(IID_IActionsEditor, [&] {
    subKey_ = TextOf(value);
    editor_->SetRegistrySubKey(subKey_);
  });
}
STDMETHODIMP ActionsEditorObject::get_Mode(LONG* value) { return GiveLong(value, mode_); }
STDMETHODIMP ActionsEditorObject::put_Mode(LONG value) {
  return Guarded(IID_IActionsEditor, [&] {
    mode_ = value;
    editor_->SetMode(value);
  });
}

STDMETHODIMP ActionsEditorObject::ShowHelp(VARIANT wrapperType, VARIANT* result) {
  if (result != nullptr) VariantInit(result);
  return Guarded(IID_IActionsEditor, [&] { editor_->ShowHelp(com::LongOfVariant(wrapperType)); });
}

STDMETHODIMP ActionsEditorObject::ModifyAction(VARIANT* continuation, VARIANT* variable, VARIANT* value,
                                               VARIANT* actionType, VARIANT* result) {
  if (continuation == nullptr || variable == nullptr || value == nullptr || actionType == nullptr) return E_POINTER;
  if (result != nullptr) VariantInit(result);
  return Guarded(IID_IActionsEditor, [&] {
    Text continuationText, variableText, valueText;
    editor_->ModifyAction(continuationText, variableText, valueText, com::LongOfVariant(*actionType));
    Replace(continuation, com::VariantFromText(continuationText));
    Replace(variable, com::VariantFromText(variableText));
    Replace(value, com::VariantFromText(valueText));
  });
}

STDMETHODIMP ActionsEditorObject::AddAction(VARIANT* result) {
  if (result != nullptr) VariantInit(result);
  return Guarded(IID_IActionsEditor, [&] { editor_->AddAction(); });
}

STDMETHODIMP ActionsEditorObject::DeleteAction(VARIANT* actionType, VARIANT* result) {
  if (actionType == nullptr) return E_POINTER;
  if (result != nullptr) VariantInit(result);
  return Guarded(IID_IActionsEditor, [&] { editor_->DeleteAction(com::LongOfVariant(*actionType)); });
}

STDMETHODIMP ActionsEditorObject::NextAction(VARIANT* continuation, VARIANT* variable, VARIANT* value,
                                             VARIANT* actionType, LONG* cursor, VARIANT* label, VARIANT* result) {
  if (continuation == nullptr || variable == nullptr || value == nullptr || actionType == nullptr ||
      cursor == nullptr || label == nullptr) {
    return E_POINTER;
  }
  if (result != nullptr) VariantInit(result);
  return Guarded(IID_IActionsEditor, [&] {
    ListedAction action;
    std::int32_t position = *cursor;
    editor_->NextAction(action, position);
    *cursor = position;
    Replace(continuation, com::VariantFromText(action.continuation));
    Replace(variable, com::VariantFromText(action.variable));
    Replace(value, com::VariantFromText(action.value));
    Replace(actionType, com::VariantFromLong(action.type));
    Replace(label, com::VariantFromText(action.label));
  });
}

}  // namespace nv::standin
