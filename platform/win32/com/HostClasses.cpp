#include "platform/win32/com/HostClasses.h"

#include <objbase.h>

#include "common/Error.h"

namespace nv::com {
namespace {

using Microsoft::WRL::ComPtr;

[[noreturn]] void NotCallableYet(const char16_t* member) {
  throw RuntimeError(static_cast<std::int32_t>(E_NOTIMPL),
                     Text(u"The host class member ") + member + u" cannot be called by this version of NVextch");
}

// Each client keeps its host object for as long as the plug-in uses it.
class VariablesClient final : public VariablesService {
 public:
  explicit VariablesClient(ComPtr<IDispatch> object) : object_(std::move(object)) {}
  void SetScenarioName(const Text&) override { NotCallableYet(u"VariablesService.SetScenarioName"); }
  void SetRegistryRoot(std::int32_t) override { NotCallableYet(u"VariablesService.SetRegistryRoot"); }
  void SetRegistrySubKey(const Text&) override { NotCallableYet(u"VariablesService.SetRegistrySubKey"); }
  Variant GetVariableValue(const Text&, const Text&) override { NotCallableYet(u"VariablesService.GetVariableValue"); }
  void SetVariableValue(const Text&, const Text&, const Text&) override {
    NotCallableYet(u"VariablesService.SetVariableValue");
  }

 private:
  ComPtr<IDispatch> object_;
};

class ReportWriterClient final : public ReportWriter {
 public:
  explicit ReportWriterClient(ComPtr<IDispatch> object) : object_(std::move(object)) {}
  void SetReportFilePath(const Text&) override { NotCallableYet(u"ReportWriter.SetReportFilePath"); }
  void SetScenarioName(const Text&) override { NotCallableYet(u"ReportWriter.SetScenarioName"); }
  void AddReportLine(const Text&, const HostObjectRef&, std::int32_t) override {
    NotCallableYet(u"ReportWriter.AddReportLine");
  }

 private:
  ComPtr<IDispatch> object_;
};

class WrapperCatalogClient final : public WrapperCatalog {
 public:
  explicit WrapperCatalogClient(ComPtr<IDispatch> object) : object_(std::move(object)) {}
  Text GetWrapperTitle(std::int16_t) override { NotCallableYet(u"WrapperCatalog.GetWrapperTitle"); }
  Text GetWrapperSummary(std::int16_t) override { NotCallableYet(u"WrapperCatalog.GetWrapperSummary"); }

 private:
  ComPtr<IDispatch> object_;
};

class ActionsEditorClient final : public ActionsEditor {
 public:
  explicit ActionsEditorClient(ComPtr<IDispatch> object) : object_(std::move(object)) {}
  void SetScenarioName(const Text&) override { NotCallableYet(u"ActionsEditor.SetScenarioName"); }
  void SetTaskName(const Text&) override { NotCallableYet(u"ActionsEditor.SetTaskName"); }
  void SetRegistryRoot(std::int32_t) override { NotCallableYet(u"ActionsEditor.SetRegistryRoot"); }
  void SetRegistrySubKey(const Text&) override { NotCallableYet(u"ActionsEditor.SetRegistrySubKey"); }
  void SetMode(std::int32_t) override { NotCallableYet(u"ActionsEditor.SetMode"); }
  void ShowHelp(std::int32_t) override { NotCallableYet(u"ActionsEditor.ShowHelp"); }
  void ModifyAction(Text&, Text&, Text&, std::int32_t) override { NotCallableYet(u"ActionsEditor.ModifyAction"); }
  void AddAction() override { NotCallableYet(u"ActionsEditor.AddAction"); }
  void DeleteAction(std::int32_t) override { NotCallableYet(u"ActionsEditor.DeleteAction"); }
  void NextAction(ListedAction&, std::int32_t&) override { NotCallableYet(u"ActionsEditor.NextAction"); }

 private:
  ComPtr<IDispatch> object_;
};

}  // namespace

ComPtr<IDispatch> CreateHostObject(REFCLSID classId, const char16_t* className) {
  ComPtr<IDispatch> object;
  const HRESULT hr = CoCreateInstance(classId, nullptr, CLSCTX_SERVER, IID_IDispatch,
                                      reinterpret_cast<void**>(object.GetAddressOf()));
  if (FAILED(hr)) {
    throw RuntimeError(static_cast<std::int32_t>(hr), Text(u"The host class ") + className + u" cannot be created");
  }
  return object;
}

std::unique_ptr<VariablesService> MakeVariablesClient(ComPtr<IDispatch> object) {
  return std::make_unique<VariablesClient>(std::move(object));
}
std::shared_ptr<ReportWriter> MakeReportWriterClient(ComPtr<IDispatch> object) {
  return std::make_shared<ReportWriterClient>(std::move(object));
}
std::unique_ptr<WrapperCatalog> MakeWrapperCatalogClient(ComPtr<IDispatch> object) {
  return std::make_unique<WrapperCatalogClient>(std::move(object));
}
std::unique_ptr<ActionsEditor> MakeActionsEditorClient(ComPtr<IDispatch> object) {
  return std::make_unique<ActionsEditorClient>(std::move(object));
}

}  // namespace nv::com
