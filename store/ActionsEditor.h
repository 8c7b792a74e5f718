#pragma once
// The host's actions editor as the plug-in uses it: only the members it calls.
#include <cstdint>

#include "common/Text.h"

namespace nv {

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

}  // namespace nv
