#pragma once
// The editor of the split function: string, separator, and one row per field naming the
// variable that receives it.
#include "dialog/RowFieldsEditor.h"
#include "dialog/SeparatorGroup.h"

namespace nv {

class FrameSplit final : public RowFieldsEditor, public SeparatorGroup {
 public:
  explicit FrameSplit(UiServices& ui);

  void SetScenario(const Text& scenario);
  // Chaine, SetChaine: EditorBase; Separateur, SetSeparateur: SeparatorGroup;
  // Colonnes, SetColonnes: RowFieldsEditor.
  void InitTexte();
  bool Verification();

 private:
  void MajBoutons();
  void btnPreview_Click();
};

}  // namespace nv
