#pragma once
// The editor of the find function: string, mask, filter, the case and trim options, and
// one row per value found naming the variable that receives it.
#include <cstdint>

#include "dialog/RowFieldsEditor.h"

namespace nv {

class FrameRecherche final : public RowFieldsEditor {
 public:
  explicit FrameRecherche(UiServices& ui);

  void SetScenario(const Text& scenario);
  // Chaine, SetChaine: EditorBase.
  Text Masque() const { return txtMasque.GetText(); }
  void SetMasque(const Text& masque) { txtMasque.SetText(masque); }
  Text Filtre() const { return txtFiltre.GetText(); }
  void SetFiltre(const Text& filtre) { txtFiltre.SetText(filtre); }
  std::int16_t IsTrimed() const { return chkTrim.Value; }
  void SetTrimed(std::int16_t value) { chkTrim.Value = value; }
  std::int16_t CaseSensitive() const { return chkCaseSensitive.Value; }
  void SetCaseSensitive(std::int16_t value) { chkCaseSensitive.Value = value; }
  // Colonnes, SetColonnes: RowFieldsEditor.
  void InitTexte();
  bool Verification();

  TextBoxVar txtMasque;
  Label lblMasque;
  Label lblValeurMasque;
  Button btnCalculeValeurMasque;
  Label lblResultatMasque;
  TextBoxVar txtFiltre;
  Label lblFiltre;
  Frame Frame1;
  CheckBox chkCaseSensitive;
  CheckBox chkTrim;

 private:
  void MajBoutons();
  void btnPreview_Click();
};

}  // namespace nv
