#include "host/RegistryActionsEditor.h"

#include <optional>

#include "common/Conversions.h"
#include "common/Error.h"
#include "common/Utf.h"
#include "host/StoredValue.h"
#include "host/TaskTypes.h"
#include "store/ActionsLayout.h"
#include "store/RegistryKey.h"
#include "store/RegistryStatusText.h"

namespace nv {
namespace {

constexpr std::int32_t kKinds[] = {ActionKind::OnErr, ActionKind::OnDec, ActionKind::ExeIf, ActionKind::Goto};

Text KindKeyOrRaise(std::int32_t kind) {
  const auto key = ActionKindKey(kind);
  if (!key) RaiseError(ErrorNumber::InvalidProcedureCall, u"Unknown action kind " + DecimalText(kind));
  return *key;
}

void RaiseOnFailure(RegStatus status, const Text& what) {
  if (status != RegError::Success) RaiseError(status, what + u" (" + FromUtf8(RegistryStatusText(status)) + u")");
}

void WriteText(Registry& registry, RegKey key, const Text& name, const Text& value) {
  RaiseOnFailure(WriteStoredText(registry, key, name, value), u"Cannot store the action value " + name);
}

void WriteNumber(Registry& registry, RegKey key, const Text& name, std::uint32_t value) {
  RaiseOnFailure(WriteStoredNumber(registry, key, name, value), u"Cannot store the action value " + name);
}

}  // namespace

Text RegistryActionsEditor::ActionKeyPath() const { return subKey_ + u"\\" + task_ + u"\\Action"; }

void RegistryActionsEditor::StoreAction(const ActionValues& values) {
  const Text kindKey = KindKeyOrRaise(values.kind);
  UniqueRegKey key;
  RaiseOnFailure(CreateUniqueKey(registry_, root_, ActionKeyPath() + u"\\" + kindKey, RegAccess::ReadWrite, key),
                 u"Cannot create the action " + kindKey + u" of task " + task_);
  const auto number = [&](const char16_t* name, const std::optional<std::uint32_t>& value) {
    if (value) WriteNumber(registry_, key.Get(), name, *value);
  };
  const auto text = [&](const char16_t* name, const std::optional<Text>& value) {
    if (value) WriteText(registry_, key.Get(), name, *value);
  };
  switch (values.kind) {
    case ActionKind::OnErr:
      number(u"Go", values.go);
      number(u"Loop", values.loop);
      break;
    case ActionKind::OnDec:
      number(u"Go", values.go);
      break;
    case ActionKind::ExeIf:
      text(u"Var", values.variable);
      text(u"Value", values.value);
      break;
    case ActionKind::Goto:
      text(u"Dest", values.dest);
      text(u"GVar", values.variable);
      number(u"Ope", values.ope);
      number(u"Check", values.check);
      text(u"Value", values.value);
      break;
  }
}

bool RegistryActionsEditor::DescribeAction(std::int32_t kind, ListedAction& action) {
  const auto kindKey = ActionKindKey(kind);
  if (!kindKey) return false;
  UniqueRegKey key;
  if (OpenUniqueKey(registry_, root_, ActionKeyPath() + u"\\" + *kindKey, RegAccess::Read, key) != RegError::Success) {
    return false;
  }
  const auto text = [&](const char16_t* name) {
    const auto value = ReadStoredValue(registry_, key.Get(), name);
    return value ? ToText(*value) : Text();
  };
  const auto flag = [&](const char16_t* name) {
    const auto value = ReadStoredValue(registry_, key.Get(), name);
    return value && IsActionFlagSet(*value);
  };
  const bool french = French();
  const Text yes = french ? u"Oui" : u"Yes";
  const Text no = french ? u"Non" : u"No";
  action = ListedAction{};
  action.type = kind;
  switch (kind) {
    case ActionKind::OnErr:
      action.label = french ? u"En cas d'erreurs" : u"On errors";
      action.continuation = flag(u"Go") ? yes : no;
      if (flag(u"Loop")) action.continuation += french ? u", relance auto" : u", auto-run";
      break;
    case ActionKind::OnDec:
      action.label = french ? u"En cas de non déclenchement" : u"In the event of non release";
      action.continuation = flag(u"Go") ? yes : no;
      break;
    case ActionKind::ExeIf:
      action.label = french ? u"Exécuter si" : u"Execute if";
      action.continuation = yes;
      action.variable = text(u"Var");
      action.value = text(u"Value");
      break;
    case ActionKind::Goto:
      action.label = french ? u"Aller à" : u"Go to";
      action.continuation = (french ? u"Aller à " : u"Go to ") + text(u"Dest");
      action.variable = text(u"GVar");
      action.value = text(u"Value");
      break;
  }
  return true;
}

void RegistryActionsEditor::NextAction(ListedAction& action, std::int32_t& cursor) {
  // Positions count the kinds present, in type-code order.
  std::int32_t position = 0;
  for (const std::int32_t kind : kKinds) {
    ListedAction found;
    if (!DescribeAction(kind, found)) continue;
    if (++position > cursor) {
      action = found;
      cursor = position;
      return;
    }
  }
  cursor = -1;
}

void RegistryActionsEditor::AddAction() {
  std::optional<ActionValues> values = prompt_.AskNewAction();
  if (!values) return;
  // A new action starts from cleared values: what the user left out reads as false or empty.
  ActionValues complete = *values;
  complete.go = complete.go.value_or(0);
  complete.loop = complete.loop.value_or(0);
  complete.check = complete.check.value_or(0);
  complete.dest = complete.dest.value_or(Text());
  complete.variable = complete.variable.value_or(Text());
  complete.value = complete.value.value_or(Text());
  if (complete.kind == ActionKind::Goto && !complete.ope) complete.ope = 4;
  const Text kindKey = KindKeyOrRaise(complete.kind);
  registry_.DeleteTree(root_, ActionKeyPath() + u"\\" + kindKey);
  StoreAction(complete);
}

void RegistryActionsEditor::ModifyAction(Text& continuation, Text& variable, Text& value, std::int32_t type) {
  ListedAction current;
  if (!DescribeAction(type, current)) {
    RaiseError(ErrorNumber::InvalidProcedureCall, u"Task " + task_ + u" has no action " + KindKeyOrRaise(type));
  }
  if (std::optional<ActionValues> changes = prompt_.AskChanges(type)) {
    changes->kind = type;
    StoreAction(*changes);
    DescribeAction(type, current);
  }
  continuation = current.continuation;
  variable = current.variable;
  value = current.value;
}

void RegistryActionsEditor::DeleteAction(std::int32_t type) {
  const Text kindKey = KindKeyOrRaise(type);
  const RegStatus status = registry_.DeleteTree(root_, ActionKeyPath() + u"\\" + kindKey);
  if (status != RegError::FileNotFound) RaiseOnFailure(status, u"Cannot delete the action " + kindKey);
}

void RegistryActionsEditor::ShowHelp(std::int32_t wrapperType) {
  if (wrapperType != kStringExtractionTaskType) {
    prompt_.ShowHelp(French() ? u"Pas d'aide pour ce type de tâche." : u"No help for this task type.");
    return;
  }
  prompt_.ShowHelp(
      French()
          ? u"Extraction Chaine : découpe une chaîne, ou la valeur d'une variable (@Nom), et range les morceaux "
            u"dans des variables du scénario. Déconcaténation : coupe à chaque séparateur. Extraction : donne à "
            u"chaque champ une suite de morceaux, de Début à Fin. Recherche variables : lit les valeurs marquées "
            u"par le filtre dans le masque."
          : u"String extraction: cuts a string, or the value of a variable (@Name), and stores the pieces into "
            u"scenario variables. Extraction: cuts at every separator. Substrings: gives each field a range of "
            u"pieces, from Start to End. Find values: reads the values that the filter marks in the mask.");
}

}  // namespace nv
