#pragma once
// The host's classes as the plug-in uses them: only the members it calls. The platform
// supplies them (COM clients on Windows, the stand-ins of host/ natively).
#include <cstdint>
#include <memory>

#include "common/Text.h"
#include "common/Variant.h"

namespace nv {

// An object of the host that the plug-in only hands on (`Bouton`).
class HostObject {
 public:
  virtual ~HostObject() = default;
};
using HostObjectRef = std::shared_ptr<HostObject>;

class VariablesService {
 public:
  virtual ~VariablesService() = default;
  virtual void SetScenarioName(const Text& scenario) = 0;
  virtual void SetRegistryRoot(std::int32_t root) = 0;
  virtual void SetRegistrySubKey(const Text& subKey) = 0;
  virtual Variant GetVariableValue(const Text& scenario, const Text& name) = 0;
  // The third argument of the host's member is always left out, so it has no place here.
  virtual void SetVariableValue(const Text& scenario, const Text& name, const Text& value) = 0;
};

class ReportWriter {
 public:
  virtual ~ReportWriter() = default;
  virtual void SetReportFilePath(const Text& path) = 0;
  virtual void SetScenarioName(const Text& scenario) = 0;
  virtual void AddReportLine(const Text& line, const HostObjectRef& button, std::int32_t level) = 0;
};

class WrapperCatalog {
 public:
  virtual ~WrapperCatalog() = default;
  virtual Text GetWrapperTitle(std::int16_t wrapperType) = 0;
  virtual Text GetWrapperSummary(std::int16_t wrapperType) = 0;
};

// One action as the editor's cursor lists it.
struct ListedAction {
  Text continuation;
  Text variable;
  Text value;
  std::int32_t type = 0;
  Text label;
};

class ActionsEditor {
 public:
  virtual ~ActionsEditor() = default;
  virtual void SetScenarioName(const Text& scenario) = 0;
  virtual void SetTaskName(const Text& task) = 0;
  virtual void SetRegistryRoot(std::int32_t root) = 0;
  virtual void SetRegistrySubKey(const Text& subKey) = 0;
  virtual void SetMode(std::int32_t mode) = 0;
  virtual void ShowHelp(std::int32_t wrapperType) = 0;
  // Fills the three display texts of the action of `type` after the user changed it.
  virtual void ModifyAction(Text& continuation, Text& variable, Text& value, std::int32_t type) = 0;
  virtual void AddAction() = 0;
  virtual void DeleteAction(std::int32_t type) = 0;
  // Cursor protocol: start at 0; each call returns the next action's position in `cursor`,
  // or -1 when there is none left.
  virtual void NextAction(ListedAction& action, std::int32_t& cursor) = 0;
};

// The task dialog as the plug-in object opens it: set up, shown modally, read back, and
// unloaded when it is let go. The platform supplies it (a window, or a headless script).
class TaskDialog {
 public:
  virtual ~TaskDialog() = default;
  virtual void SetTaskStored(std::int16_t stored) = 0;
  virtual std::int16_t TaskStored() const = 0;
  virtual void SetTaskName(const Text& name) = 0;
  virtual Text TaskName() const = 0;
  virtual void SetScenarioName(const Text& scenario) = 0;
  // The first use of the window loads the dialog (its Form_Load runs) before the change.
  virtual void SetCaption(const Text& caption) = 0;
  virtual void SetPictureBorderStyle(std::int16_t style) = 0;
  // The icon resource of the module, by name, shown in the picture box.
  virtual void SetPictureIcon(const Text& resourceName) = 0;
  // Loads the dialog if it is not yet, shows it modally, and returns once it is hidden.
  virtual void ShowModal() = 0;
};

class DialogPresenter {
 public:
  virtual ~DialogPresenter() = default;
  virtual std::unique_ptr<TaskDialog> CreateTaskDialog() = 0;
};

// Creates the host's objects, one per use, and lets the host's thread breathe.
class HostServices {
 public:
  virtual ~HostServices() = default;
  virtual std::unique_ptr<VariablesService> CreateVariablesService() = 0;
  virtual std::shared_ptr<ReportWriter> CreateReportWriter() = 0;
  virtual std::unique_ptr<WrapperCatalog> CreateWrapperCatalog() = 0;
  virtual std::unique_ptr<ActionsEditor> CreateActionsEditor() = 0;
  // Processes the messages already waiting for the calling thread.
  virtual void YieldToHost() = 0;
};

}  // namespace nv
