#pragma once
// A task's follow-up actions as the plug-in reads them: the kinds, their keys below
// <task>\Action, the reading rules of their stored values, and the editor's listing.
#include <cstdint>
#include <functional>
#include <optional>

#include "common/Text.h"
#include "common/Variant.h"
#include "store/ActionsEditor.h"

namespace nv {

namespace ActionKind {
constexpr std::int32_t OnErr = 0;
constexpr std::int32_t OnDec = 1;
constexpr std::int32_t ExeIf = 2;
constexpr std::int32_t Goto = 3;
}  // namespace ActionKind

// "OnErr", "OnDec", "ExeIf", "Goto"; nothing for any other code.
std::optional<Text> ActionKindKey(std::int32_t kind);

// <task>\Action\<kind key>, the section of that action's values.
Text ActionSection(TextView taskName, TextView kindKey);

// A flag is set when its value is the number 1 or a text that reads as 1.
bool IsActionFlagSet(const Variant& value);

// 0 "<", 1 "<=", 2 ">", 3 ">=", 4 "=", 5 "<>"; empty for an empty value. A value outside
// that table is shown as it is stored, so that the user sees what is there.
Text OperatorText(const Variant& value);

// Prepares an editor for one use, as every caller does it before its call: root, sub-key,
// mode 0 when asked, task, scenario.
void ConfigureActionsEditor(ActionsEditor& editor, const Text& taskName, const Text& scenario, bool withMode);

// Lists the actions of a task through a prepared editor, in its order: the cursor from 0
// until -1.
void ListTaskActions(ActionsEditor& editor,
                     const std::function<void(const ListedAction& action, std::int32_t position)>& handle);

}  // namespace nv
