// The members through which the host describes a task: GetTaskDescription, GetActions,
// GetTitle and GetSummary. None of them writes anything.
#include "common/Conversions.h"
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

constexpr const char16_t* kLineBreak = u"\r\n";
constexpr const char16_t* kIndent = u"    ";

// The function's name; a code without a function shows the code itself.
Text FunctionName(std::int16_t fonction) {
  switch (fonction) {
    case FunctionCode::Split: return LoadText(120);
    case FunctionCode::Substrings: return LoadText(130);
    case FunctionCode::FindValues: return LoadText(140);
    default: return DecimalText(fonction);
  }
}

const char16_t* TrueFalse(bool value) { return value ? u"True" : u"False"; }
const char16_t* VraiFaux(bool value) { return value ? u"Vrai" : u"Faux"; }

// The tag and body of one action, from the values stored under its key.
Text ActionBody(const Text& taskName, std::int32_t kind, bool french) {
  const auto key = ActionKindKey(kind);
  if (!key) return {};
  const Text section = ActionSection(taskName, *key);
  const auto flag = [&](const char16_t* name) { return IsActionFlagSet(ReadRegistryValue(section, name)); };
  const auto text = [&](const char16_t* name) { return ToText(ReadRegistryValue(section, name)); };
  Text body = u"[" + *key + u"]#";
  switch (kind) {
    case ActionKind::OnErr:
      body += french ? u"Continuez le scénario : " : u"Run scenario : ";
      body += french ? VraiFaux(flag(u"Go")) : TrueFalse(flag(u"Go"));
      body += kLineBreak;
      body += kIndent;
      body += french ? u"Auto-Relance : " : u"Auto-Run : ";
      body += TrueFalse(flag(u"Loop"));
      break;
    case ActionKind::OnDec:
      body += french ? u"Continuez le scénario : " : u"Run scenario : ";
      body += french ? VraiFaux(flag(u"Go")) : TrueFalse(flag(u"Go"));
      break;
    case ActionKind::Goto: {
      body += u"Goto " + text(u"Dest") + kLineBreak + kIndent;
      body += french ? u"Effectuer le test après exécution : " : u"Check after execution : ";
      body += french ? VraiFaux(flag(u"Check")) : TrueFalse(flag(u"Check"));
      body += kLineBreak;
      body += kIndent;
      body += french ? u"Si @" : u"If @";
      body += text(u"GVar") + u" " + OperatorText(ReadRegistryValue(section, u"Ope")) + u" " + text(u"Value");
      break;
    }
    default:
      break;
  }
  return body;
}

}  // namespace

Text ExtractionChaine::GetTaskDescription() {
  UseOwnRegistryContext();
  LoadTaskDefinition(Nom, Definition);
  const std::vector<Text> labels = {LoadText(110), LoadText(111), LoadText(113), LoadText(131), LoadText(132)};
  const std::vector<Text> values = {FunctionName(Definition.Fonction), Definition.Chaine, Definition.Separateur,
                                    Definition.Masque, Definition.Filtre};
  return DescribeTable(Nom, LoadText(101), labels, values, Definition.Comment);
}

Text ExtractionChaine::GetActions() {
  UseOwnRegistryContext();
  const bool french = Module().LanguageOffset == 0;
  Text result;
  ListTaskActions(*PrepareActionsEditor(Nom, Scen, true), [&](const ListedAction& action, std::int32_t) {
    result += ActionBody(Nom, action.type, french);
    if (!action.variable.empty() && !action.value.empty()) {
      if (action.type != ActionKind::ExeIf) result += Text(kLineBreak) + kIndent;
      const auto number = ParseNumber(action.value);
      result += u"@" + action.variable + u" = " + (number && *number == 1 ? u"Vrai" : u"Faux");
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
