#include "dialog/EditorBase.h"

#include "common/Conversions.h"
#include "common/Variant.h"
#include "plugin/VariableAccess.h"
#include "store/Texts.h"

namespace nv {
namespace {

bool LitVariable(const Text& scenario, const Text& entry, Text& value) {
  Variant found;
  if (!LookUpVariable(scenario, entry.substr(1), found)) return false;
  value = ToText(std::move(found));
  return true;
}

}  // namespace

Text ValeurEntree(const Text& scenario, const Text& entry) {
  if (!IsVariableReference(entry)) return entry;
  Text value;
  return LitVariable(scenario, entry, value) ? value : Text(u"N/C");
}

Text ResoutEntree(const Text& scenario, const Text& entry) {
  if (!IsVariableReference(entry)) return entry;
  Text value;
  LitVariable(scenario, entry, value);
  return value;
}

Text Rogne(TextView text) {
  const auto first = text.find_first_not_of(u' ');
  if (first == TextView::npos) return {};
  const auto last = text.find_last_not_of(u' ');
  return Text(text.substr(first, last - first + 1));
}

EditorBase::EditorBase(UiServices& ui) : ui_(ui) {
  btnCalculeValeurChaine.Caption = Text(u"=");
  btnCalculeValeurChaine.Enabled = false;
  btnPreview.Enabled = false;
  btnCalculeValeurChaine.OnClick = [this] { CalculeValeur(txtChaine, lblResultatChaine); };
}

void EditorBase::DonneScenario(const Text& scenario, std::initializer_list<TextBoxVar*> boxes) {
  scenario_ = scenario;
  for (TextBoxVar* box : boxes) box->Scenario = scenario;
  NovraFlexGrid1.Scenario = scenario;
}

void EditorBase::CalculeValeur(const TextBoxVar& entry, Label& result) const {
  result.Caption = ValeurEntree(scenario_, entry.GetText());
}

bool EditorBase::Echec(TextId message, Control& focus) {
  ui_.MsgBox(LoadText(message), kMessageExclamation);
  ui_.SetFocus(focus);
  return false;
}

void EditorBase::SurveilleCellulesVariables(std::function<bool()> celluleVariable) {
  NovraFlexGrid1.OnEditCheck = [this, celluleVariable = std::move(celluleVariable)] {
    if (!celluleVariable()) return;
    const Text name = Rogne(NovraFlexGrid1.Editor().Content);
    // Only a warning: the text stays as typed, and the fields property drops it.
    if (!name.empty() && !IsVariableReference(name)) ui_.MsgBox(LoadText(TextId::NotAVariableMessage), kMessageExclamation);
  };
  NovraFlexGrid1.OnEditTrim = [this] { NovraFlexGrid1.Editor().Content = Rogne(NovraFlexGrid1.Editor().Content); };
}

}  // namespace nv
