#pragma once
// The stand-in classes: thin COM shells over the portable stand-ins of host/.
#include <windows.h>

#include <cstdint>
#include <memory>

#include "HostInterfaces.h"
#include "common/Text.h"
#include "host/RegistryActionsEditor.h"
#include "host/StandInServices.h"
#include "platform/win32/com/UniqueVariant.h"
#include "platform/win32/standin/StandInDispatch.h"

namespace nv::standin {

class VariablesObject : public StandInDispatch<IVariablesService> {
 public:
  VariablesObject();

  STDMETHODIMP get_ScenarioName(BSTR* value) override;
  STDMETHODIMP put_ScenarioName(BSTR value) override;
  STDMETHODIMP get_RegistryRoot(LONG* value) override;
  STDMETHODIMP put_RegistryRoot(LONG value) override;
  STDMETHODIMP get_RegistrySubKey(BSTR* value) override;
  STDMETHODIMP put_RegistrySubKey(BSTR value) override;
  STDMETHODIMP Reserved07() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved08() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved09() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved10() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved11() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved12() override { return E_NOTIMPL; }
  STDMETHODIMP GetVariableValue(VARIANT* scenario, VARIANT* name, VARIANT* value) override;
  STDMETHODIMP Reserved14() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved15() override { return E_NOTIMPL; }
  STDMETHODIMP SetVariableValue(VARIANT* scenario, VARIANT* name, VARIANT* reserved, VARIANT* value) override;

 private:
  std::unique_ptr<VariablesStandIn> variables_;
  Text scenario_;
  std::int32_t root_ = 0;
  Text subKey_;
};

class ReportWriterObject : public StandInDispatch<IReportWriter> {
 public:
  ReportWriterObject();

  STDMETHODIMP Reserved01() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved02() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved03() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved04() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved05() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved06() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved07() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved08() override { return E_NOTIMPL; }
  STDMETHODIMP get_ReportFilePath(VARIANT* value) override;
  STDMETHODIMP put_ReportFilePath(VARIANT value) override;
  STDMETHODIMP get_ScenarioName(VARIANT* value) override;
  STDMETHODIMP put_ScenarioName(VARIANT value) override;
  STDMETHODIMP Reserved13() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved14() override { return E_NOTIMPL; }
  STDMETHODIMP AddReportLine(BSTR* line, IDispatch** button, LONG* level) override;

 private:
  ReportFileWriter writer_;
  Text path_;
  Text scenario_;
};

class WrapperCatalogObject : public StandInDispatch<IWrapperCatalog> {
 public:
  WrapperCatalogObject();

  STDMETHODIMP Reserved01() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved02() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved03() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved04() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved05() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved06() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved07() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved08() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved09() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved10() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved11() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved12() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved13() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved14() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved15() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved16() override { return E_NOTIMPL; }
  STDMETHODIMP GetWrapperTitle(SHORT* wrapperType, BSTR* title) override;
  STDMETHODIMP GetWrapperSummary(SHORT* wrapperType, BSTR* summary) override;

 private:
  CatalogStandIn catalog_;
};

class ActionsEditorObject : public StandInDispatch<IActionsEditor> {
 public:
  ActionsEditorObject();

  STDMETHODIMP get_ScenarioName(BSTR* value) override;
  STDMETHODIMP put_ScenarioName(BSTR value) override;
  STDMETHODIMP get_TaskName(BSTR* value) override;
  STDMETHODIMP put_TaskName(BSTR value) override;
  STDMETHODIMP get_RegistryRoot(LONG* value) override;
  STDMETHODIMP put_RegistryRoot(LONG value) override;
  STDMETHODIMP get_RegistrySubKey(BSTR* value) override;
  STDMETHODIMP put_RegistrySubKey(BSTR value) override;
  STDMETHODIMP get_Mode(LONG* value) override;
  STDMETHODIMP put_Mode(LONG value) override;
  STDMETHODIMP ShowHelp(VARIANT wrapperType, VARIANT* result) override;
  STDMETHODIMP ModifyAction(VARIANT* continuation, VARIANT* variable, VARIANT* value, VARIANT* actionType,
                            VARIANT* result) override;
  STDMETHODIMP AddAction(VARIANT* result) override;
  STDMETHODIMP Reserved14() override { return E_NOTIMPL; }
  STDMETHODIMP Reserved15() override { return E_NOTIMPL; }
  STDMETHODIMP DeleteAction(VARIANT* actionType, VARIANT* result) override;
  STDMETHODIMP NextAction(VARIANT* continuation, VARIANT* variable, VARIANT* value, VARIANT* actionType, LONG* cursor,
                          VARIANT* label, VARIANT* result) override;

 private:
  std::unique_ptr<ActionPrompt> prompt_;
  std::unique_ptr<RegistryActionsEditor> editor_;
  Text scenario_;
  Text task_;
  std::int32_t root_ = 0;
  Text subKey_;
  std::int32_t mode_ = 0;
};

}  // namespace nv::standin
