#include "store/ActionsLayout.h"

#include "common/Conversions.h"
#include "store/ModuleState.h"

namespace nv {

std::optional<Text> ActionKindKey(std::int32_t kind) {
  switch (kind) {
    case ActionKind::OnErr: return u"OnErr";
    case ActionKind::OnDec: return u"OnDec";
    case ActionKind::ExeIf: return u"ExeIf";
    case ActionKind::Goto: return u"Goto";
    default: return std::nullopt;
  }
}

Text ActionSection(TextView taskName, TextView kindKey) {
  Text section(taskName);
  section += u"\\Action\\";
  section += kindKey;
  return section;
}

bool IsActionFlagSet(const Variant& value) {
  if (value.IsEmptyText()) return false;
  if (value.IsLong()) return value.LongValue() == 1;
  const auto number = ParseNumber(value.TextValue());
  return number && *number == 1;
}

Text OperatorText(const Variant& value) {
  if (value.IsEmptyText()) return {};
  static const char16_t* const kOperators[] = {u"<", u"<=", u">", u">=", u"=", u"<>"};
  std::optional<double> number;
  if (value.IsLong()) number = value.LongValue();
  if (value.IsText()) number = ParseNumber(value.TextValue());
  if (number && *number >= 0 && *number <= 5 && *number == static_cast<int>(*number)) {
    return kOperators[static_cast<int>(*number)];
  }
  return ToText(value);
}

void ConfigureActionsEditor(ActionsEditor& editor, const Text& taskName, const Text& scenario, bool withMode) {
  editor.SetRegistryRoot(static_cast<std::int32_t>(Module().CurrentRoot));
  editor.SetRegistrySubKey(Module().CurrentSubKey);
  if (withMode) editor.SetMode(0);
  editor.SetTaskName(taskName);
  editor.SetScenarioName(scenario);
}

void ListTaskActions(ActionsEditor& editor,
                     const std::function<void(const ListedAction& action, std::int32_t position)>& handle) {
  std::int32_t cursor = 0;
  while (cursor != -1) {
    ListedAction action;
    editor.NextAction(action, cursor);
    if (cursor == -1) break;
    handle(action, cursor);
  }
}

}  // namespace nv
