#pragma once
// The stand-in of the host's actions editor: keeps a task's actions under <task>\Action
// in the registry, one key per kind.
#include "host/ActionValues.h"
#include "store/ActionsEditor.h"
#include "store/Registry.h"

namespace nv {

class RegistryActionsEditor final : public ActionsEditor {
 public:
  RegistryActionsEditor(Registry& registry, std::int32_t languageOffset, ActionPrompt& prompt)
      : registry_(registry), languageOffset_(languageOffset), prompt_(prompt) {}

  void SetScenarioName(const Text& scenario) override { scenario_ = scenario; }
  void SetTaskName(const Text& task) override { task_ = task; }
  void SetRegistryRoot(std::int32_t root) override { root_ = RootFromLong(root); }
  void SetRegistrySubKey(const Text& subKey) override { subKey_ = subKey; }
  void SetMode(std::int32_t mode) override { mode_ = mode; }
  void ShowHelp(std::int32_t wrapperType) override;
  void ModifyAction(Text& continuation, Text& variable, Text& value, std::int32_t type) override;
  void AddAction() override;
  void DeleteAction(std::int32_t type) override;
  void NextAction(ListedAction& action, std::int32_t& cursor) override;

  // Writes (or overwrites) the action's values; the kind decides which ones exist.
  void StoreAction(const ActionValues& values);
  // The display texts of a stored action; false when there is none of that kind.
  bool DescribeAction(std::int32_t kind, ListedAction& action);

 private:
  Text ActionKeyPath() const;
  bool French() const { return languageOffset_ == 0; }

  Registry& registry_;
  std::int32_t languageOffset_;
  ActionPrompt& prompt_;
  Text scenario_;
  Text task_;
  RegKey root_ = 0;
  Text subKey_;
  std::int32_t mode_ = 0;
};

}  // namespace nv
