#include "dialog/FrameRecherche.h"

#include <vector>

#include "common/Error.h"
#include "engine/FindValues.h"
#include "store/Texts.h"

namespace nv {

FrameRecherche::FrameRecherche(UiServices& ui) : RowFieldsEditor(ui) {
  lblValeurMasque.Caption = Text(u"Valeur");
  btnCalculeValeurMasque.Caption = Text(u"=");
  btnCalculeValeurMasque.Enabled = false;
  Frame1.Caption = Text(u"Options");
  for (TextBoxVar* box : {&txtChaine, &txtMasque, &txtFiltre}) box->OnChange = [this] { MajBoutons(); };
  btnCalculeValeurMasque.OnClick = [this] { CalculeValeur(txtMasque, lblResultatMasque); };
  btnPreview.OnClick = [this] { btnPreview_Click(); };
  InitTexte();
}

void FrameRecherche::SetScenario(const Text& scenario) {
  DonneScenario(scenario, {&txtChaine, &txtMasque, &txtFiltre});
}

void FrameRecherche::InitTexte() {
  lblChaine.Caption = LoadText(TextId::StringLabel);
  lblValeurChaine.Caption = LoadText(TextId::ValueLabel);
  lblResultatChaine.Caption.clear();
  lblMasque.Caption = LoadText(TextId::MaskLabel);
  lblFiltre.Caption = LoadText(TextId::FilterLabel);
  txtMasque.SetText({});
  lblResultatMasque.Caption.clear();
  lblTableau.Caption = LoadText(TextId::FieldCountLabel);
  btnClear.Caption = LoadText(TextId::ClearButton);
  btnPreview.Caption = LoadText(TextId::PreviewButton);
  chkCaseSensitive.Caption = LoadText(TextId::CaseSensitiveCheck);
  chkTrim.Caption = LoadText(TextId::TrimCheck);
  InitGrille();
}

bool FrameRecherche::Verification() {
  if (txtChaine.GetText().empty()) return Echec(TextId::StringMissingMessage, txtChaine);
  if (txtMasque.GetText().empty()) return Echec(TextId::MaskMissingMessage, txtMasque);
  if (txtFiltre.GetText().empty()) return Echec(TextId::FilterMissingMessage, txtFiltre);
  return true;
}

void FrameRecherche::MajBoutons() {
  const bool chaine = !txtChaine.GetText().empty();
  const bool masque = !txtMasque.GetText().empty();
  btnCalculeValeurChaine.Enabled = chaine;
  btnCalculeValeurMasque.Enabled = masque;
  btnPreview.Enabled = chaine && masque && !txtFiltre.GetText().empty();
}

void FrameRecherche::btnPreview_Click() {
  // Every step runs even when the one before it failed, and none shows a message.
  const auto step = [](auto&& action) {
    try {
      action();
    } catch (const RuntimeError&) {
    }
  };
  Text chaine = Resout(txtChaine);
  Text masque = Resout(txtMasque);
  const Text filtre = Resout(txtFiltre);
  std::vector<TextView> values;
  step([&] {
    std::int16_t start = 0;
    std::int16_t end = 0;
    FindValues(chaine, masque, filtre, start, end, chkCaseSensitive.Value == 1, chkTrim.Value == 1, values);
  });
  step([&] { AfficheResultats(values); });
  NovraFlexGrid1.Reset = false;
}

}  // namespace nv
