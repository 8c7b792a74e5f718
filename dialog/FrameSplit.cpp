#include "dialog/FrameSplit.h"

#include <vector>

#include "engine/Split.h"
#include "store/Texts.h"

namespace nv {

FrameSplit::FrameSplit(UiServices& ui) : RowFieldsEditor(ui) {
  txtChaine.OnChange = [this] { MajBoutons(); };
  txtSeparator.OnChange = [this] { MajBoutons(); };
  btnCalculeValeurSeparator.OnClick = [this] { CalculeValeur(txtSeparator, lblResultSeparator); };
  btnPreview.OnClick = [this] { btnPreview_Click(); };
  InitTexte();
}

void FrameSplit::SetScenario(const Text& scenario) { DonneScenario(scenario, {&txtChaine, &txtSeparator}); }

void FrameSplit::InitTexte() {
  lblChaine.Caption = LoadText(TextId::StringLabel);
  lblValeurChaine.Caption = LoadText(TextId::ValueLabel);
  lblResultatChaine.Caption.clear();
  LegendesSeparateur();
  SetSeparateur(u";");
  lblResultSeparator.Caption.clear();
  lblTableau.Caption = LoadText(TextId::FieldCountLabel);
  btnClear.Caption = LoadText(TextId::ClearButton);
  btnPreview.Caption = LoadText(TextId::PreviewButton);
  InitGrille();
}

bool FrameSplit::Verification() {
  if (txtChaine.GetText().empty()) return Echec(TextId::StringMissingMessage, txtChaine);
  if (txtSeparator.GetText().empty()) return Echec(TextId::SeparatorMissingMessage, txtSeparator);
  return true;
}

void FrameSplit::MajBoutons() {
  const bool chaine = !txtChaine.GetText().empty();
  const bool separateur = !txtSeparator.GetText().empty();
  btnCalculeValeurChaine.Enabled = chaine;
  btnCalculeValeurSeparator.Enabled = separateur;
  btnPreview.Enabled = chaine && separateur;
}

void FrameSplit::btnPreview_Click() {
  Text chaine = Resout(txtChaine);
  const Text separateur = Resout(txtSeparator);
  SplitPieces fields;
  SplitBySeparator(chaine, separateur, fields);
  AfficheResultats(fields.Views());
}

}  // namespace nv
