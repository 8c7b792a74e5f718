#include "platform/win32/com/HostClasses.h"

#include <windows.h>
#include <objbase.h>
#include <wrl/client.h>

#include "HostInterfaces.h"
#include "common/Error.h"
#include "platform/win32/com/Bstr.h"
#include "platform/win32/com/CallFailure.h"
#include "platform/win32/com/HostObjectDispatch.h"
#include "platform/win32/com/VariantValues.h"

namespace nv::com {
namespace {

using Microsoft::WRL::ComPtr;

template <typename Interface>
ComPtr<Interface> CreateHostObject(REFCLSID classId, REFIID interfaceId, const char16_t* className) {
  ComPtr<Interface> object;
  const HRESULT hr =
      CoCreateInstance(classId, nullptr, CLSCTX_SERVER, interfaceId, reinterpret_cast<void**>(object.GetAddressOf()));
  if (FAILED(hr)) {
    throw RuntimeError(static_cast<std::int32_t>(hr), Text(u"The host class ") + className + u" cannot be created");
  }
  return object;
}

// Each client holds its host object for one use: the object goes when the client does.
class VariablesClient final : public VariablesService {
 public:
  VariablesClient()
      : object_(CreateHostObject<IVariablesService>(CLSID_VariablesService, IID_IVariablesService,
                                                    u"VariablesService")) {}

  void SetScenarioName(const Text& scenario) override {
    CheckCall(object_->put_ScenarioName(MakeBstr(scenario).get()), u"VariablesService.ScenarioName");
  }
  void SetRegistryRoot(std::int32_t root) override {
    CheckCall(object_->put_RegistryRoot(root), u"VariablesService.RegistryRoot");
  }
  void SetRegistrySubKey(const Text& subKey) override {
    CheckCall(object_->put_RegistrySubKey(MakeBstr(subKey).get()), u"VariablesService.RegistrySubKey");
  }
  Variant GetVariableValue(const Text& scenario, const Text& name) override {
    UniqueVariant scenarioArgument = VariantFromText(scenario);
    UniqueVariant nameArgument = VariantFromText(name);
    UniqueVariant value;
    CheckCall(object_->GetVariableValue(scenarioArgument.get(), nameArgument.get(), value.put()),
              u"VariablesService.GetVariableValue");
    return ValueOfVariant(*value.get());
  }
  void SetVariableValue(const Text& scenario, const Text& name, TextView value) override {
    UniqueVariant scenarioArgument = VariantFromText(scenario);
    UniqueVariant nameArgument = VariantFromText(name);
    UniqueVariant leftOut = LeftOutVariant();
    UniqueVariant valueArgument = VariantFromText(value);
    CheckCall(object_->SetVariableValue(scenarioArgument.get(), nameArgument.get(), leftOut.get(), valueArgument.get()),
              u"VariablesService.SetVariableValue");
  }

 private:
  ComPtr<IVariablesService> object_;
};

class ReportWriterClient final : public ReportWriter {
 public:
  ReportWriterClient()
      : object_(CreateHostObject<IReportWriter>(CLSID_ReportWriter, IID_IReportWriter, u"ReportWriter")) {}

  void SetReportFilePath(const Text& path) override {
    UniqueVariant argument = VariantFromText(path);
    CheckCall(object_->put_ReportFilePath(*argument.get()), u"ReportWriter.ReportFilePath");
  }
  void SetScenarioName(const Text& scenario) override {
    UniqueVariant argument = VariantFromText(scenario);
    CheckCall(object_->put_ScenarioName(*argument.get()), u"ReportWriter.ScenarioName");
  }
  void AddReportLine(TextView line, const HostObjectRef& button, std::int32_t level) override {
    UniqueBstr text = MakeBstr(line);
    BSTR textArgument = text.get();
    IDispatch* buttonArgument = DispatchOf(button);
    LONG levelArgument = level;
    CheckCall(object_->AddReportLine(&textArgument, &buttonArgument, &levelArgument), u"ReportWriter.AddReportLine");
  }

 private:
  ComPtr<IReportWriter> object_;
};

class WrapperCatalogClient final : public WrapperCatalog {
 public:
  WrapperCatalogClient()
      : object_(CreateHostObject<IWrapperCatalog>(CLSID_WrapperCatalog, IID_IWrapperCatalog, u"WrapperCatalog")) {}

  Text GetWrapperTitle(std::int16_t wrapperType) override {
    UniqueBstr title;
    SHORT type = wrapperType;
    CheckCall(object_->GetWrapperTitle(&type, title.put()), u"WrapperCatalog.GetWrapperTitle");
    return TextOf(title.get());
  }
  Text GetWrapperSummary(std::int16_t wrapperType) override {
    UniqueBstr summary;
    SHORT type = wrapperType;
    CheckCall(object_->GetWrapperSummary(&type, summary.put()), u"WrapperCatalog.GetWrapperSummary");
    return TextOf(summary.get());
  }

 private:
  ComPtr<IWrapperCatalog> object_;
};

class ActionsEditorClient final : public ActionsEditor {
 public:
  ActionsEditorClient()
      : object_(CreateHostObject<IActionsEditor>(CLSID_ActionsEditor, IID_IActionsEditor, u"ActionsEditor")) {}

  void SetScenarioName(const Text& scenario) override {
    CheckCall(object_->put_ScenarioName(MakeBstr(scenario).get()), u"ActionsEditor.ScenarioName");
  }
  void SetTaskName(const Text& task) override {
    CheckCall(object_->put_TaskName(MakeBstr(task).get()), u"ActionsEditor.TaskName");
  }
  void SetRegistryRoot(std::int32_t root) override {
    CheckCall(object_->put_RegistryRoot(root), u"ActionsEditor.RegistryRoot");
  }
  void SetRegistrySubKey(const Text& subKey) override {
    CheckCall(object_->put_RegistrySubKey(MakeBstr(subKey).get()), u"ActionsEditor.RegistrySubKey");
  }
  void SetMode(std::int32_t mode) override { CheckCall(object_->put_Mode(mode), u"ActionsEditor.Mode"); }
  void ShowHelp(std::int32_t wrapperType) override {
    UniqueVariant argument = VariantFromLong(wrapperType);
    UniqueVariant ignored;
    CheckCall(object_->ShowHelp(*argument.get(), ignored.put()), u"ActionsEditor.ShowHelp");
  }
  void ModifyAction(Text& continuation, Text& variable, Text& value, std::int32_t type) override {
    UniqueVariant continuationOut, variableOut, valueOut, ignored;
    UniqueVariant typeArgument = VariantFromLong(type);
    CheckCall(object_->ModifyAction(continuationOut.get(), variableOut.get(), valueOut.get(), typeArgument.get(),
                                    ignored.put()),
              u"ActionsEditor.ModifyAction");
    continuation = TextOfVariant(*continuationOut.get());
    variable = TextOfVariant(*variableOut.get());
    value = TextOfVariant(*valueOut.get());
  }
  void AddAction() override {
    UniqueVariant ignored;
    CheckCall(object_->AddAction(ignored.put()), u"ActionsEditor.AddAction");
  }
  void DeleteAction(std::int32_t type) override {
    UniqueVariant typeArgument = VariantFromLong(type);
    UniqueVariant ignored;
    CheckCall(object_->DeleteAction(typeArgument.get(), ignored.put()), u"ActionsEditor.DeleteAction");
  }
  void NextAction(ListedAction& action, std::int32_t& cursor) override {
    UniqueVariant continuation, variable, value, type, label, ignored;
    LONG cursorArgument = cursor;
    CheckCall(object_->NextAction(continuation.get(), variable.get(), value.get(), type.get(), &cursorArgument,
                                  label.get(), ignored.put()),
              u"ActionsEditor.NextAction");
    cursor = cursorArgument;
    // The last call's outputs mean nothing: the cursor alone says the listing ended.
    if (cursor == -1) return;
    action.continuation = TextOfVariant(*continuation.get());
    action.variable = TextOfVariant(*variable.get());
    action.value = TextOfVariant(*value.get());
    action.type = LongOfVariant(*type.get());
    action.label = TextOfVariant(*label.get());
  }

 private:
  ComPtr<IActionsEditor> object_;
};

}  // namespace

std::unique_ptr<VariablesService> CreateVariablesClient() { return std::make_unique<VariablesClient>(); }
std::shared_ptr<ReportWriter> CreateReportWriterClient() { return std::make_shared<ReportWriterClient>(); }
std::unique_ptr<WrapperCatalog> CreateWrapperCatalogClient() { return std::make_unique<WrapperCatalogClient>(); }
std::unique_ptr<ActionsEditor> CreateActionsEditorClient() { return std::make_unique<ActionsEditorClient>(); }

}  // namespace nv::com
