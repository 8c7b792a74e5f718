// The members through which the host describes a task: GetTaskDescription, GetActions,
// GetTitle and GetSummary. None of them writes anything.
#include "common/Conversions.h"
#include "plugin/ActionsWords.h"
#include "plugin/DescribeTable.h"
#include "plugin/ExtractionChaine.h"
#include "plugin/HostModule.h"
#include "store/ActionsLayout.h"
#include "store/ModuleState.h"
#include "store/RegistryOperations.h"
#include "store/TaskStore.h"
#include "store/Texts.h"

namespace nv {
namespace {

// The function's name; a code without a function shows the code itself.
Text FunctionName(std::int16_t fonction) {
  switch (fonction) {
    case FunctionCode::Split: return LoadText(TextId::SplitFunctionName);
    case FunctionCode::Substrings: return LoadText(TextId::SubstringsFunctionName);
    case FunctionCode::FindValues: return LoadText(TextId::FindValuesFunctionName);
    default: return DecimalText(fonction);
  }
}

// The tag and body of one action, from the values stored under its key.
Text ActionBody(const Text& taskName, std::int32_t kind, const ActionsWords& words) {
  const auto key = ActionKindKey(kind);
  if (!key) return {};
  const Text section = ActionSection(taskName, *key);
  const auto flag = [&](const char16_t* name) { return IsActionFlagSet(ReadRegistryValue(section, name)); };
  const auto flagWord = [&](const char16_t* name) { return flag(name) ? words.flagSet : words.flagClear; };
  const auto text = [&](const char16_t* name) { return ToText(ReadRegistryValue(section, name)); };
  Text body = u"[" + *key + u"]#";
  switch (kind) {
    case ActionKind::OnErr:
      body += words.runScenario;
      body += flagWord(u"Go");
      body += kActionsLineBreak;
      body += kActionsIndent;
      body += words.autoRun;
      body += flag(u"Loop") ? kLoopSet : kLoopClear;
      break;
    case ActionKind::OnDec:
      body += words.runScenario;
      body += flagWord(u"Go");
      break;
    case ActionKind::Goto:
      body += u"Goto " + text(u"Dest");
      body += kActionsLineBreak;
      body += kActionsIndent;
      body += words.checkAfterRun;
      body += flagWord(u"Check");
      body += kActionsLineBreak;
      body += kActionsIndent;
      body += words.ifVariable;
      body += text(u"GVar") + u" " + OperatorText(ReadRegistryValue(section, u"Ope")) + u" " + text(u"Value");
      break;
    default:
      break;
  }
  return body;
}

}  // namespace

Text ExtractionChaine::GetTaskDescription() {
  UseOwnRegistryContext();
  LoadTaskDefinition(Nom, Definition);
  const std::vector<Text> labels = {LoadText(TextId::FunctionLabel), LoadText(TextId::StringLabel), LoadText(TextId::SeparatorLabel), LoadText(TextId::MaskLabel), LoadText(TextId::FilterLabel)};
  const std::vector<Text> values = {FunctionName(Definition.Fonction), Definition.Chaine, Definition.Separateur,
                                    Definition.Masque, Definition.Filtre};
  return DescribeTable(Nom, LoadText(TextId::Title), labels, values, Definition.Comment);
}

Text ExtractionChaine::GetActions() {
  UseOwnRegistryContext();
  const ActionsWords& words =
      Module().LanguageOffset == Language::French ? kFrenchActionsWords : kEnglishActionsWords;
  Text result;
  ListTaskActions(*PrepareActionsEditor(Nom, Scen, true), [&](const ListedAction& action, std::int32_t) {
    result += ActionBody(Nom, action.type, words);
    if (!action.variable.empty() && !action.value.empty()) {
      if (action.type != ActionKind::ExeIf) {
        result += kActionsLineBreak;
        result += kActionsIndent;
      }
      const auto number = ParseNumber(action.value);
      result += u"@" + action.variable + u" = ";
      result += number && *number == 1 ? kConditionTrue : kConditionFalse;
    }
    result += u"#";
  });
  return result;
}

Text ExtractionChaine::GetTitle() {
  const std::unique_ptr<WrapperCatalog> catalog = ModuleServices().CreateWrapperCatalog();
  return catalog->GetWrapperTitle(ToInteger(Variant::FromLong(GetWrapperType())));
}

Text ExtractionChaine::GetSummary() {
  const std::unique_ptr<WrapperCatalog> catalog = ModuleServices().CreateWrapperCatalog();
  return catalog->GetWrapperSummary(ToInteger(Variant::FromLong(GetWrapperType())));
}

}  // namespace nv
