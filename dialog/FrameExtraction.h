#pragma once
// The editor of positional extraction: string, separator, and one grid column per field
// with its variable, start, end, show-separator flag and previewed value.
#include <array>
#include <vector>

#include "dialog/EditorBase.h"
#include "dialog/SeparatorGroup.h"

namespace nv {

// Rows of a field's column.
namespace ExtractionRow {
constexpr std::int32_t Variable = 0;
constexpr std::int32_t Start = 1;
constexpr std::int32_t End = 2;
constexpr std::int32_t ShowSep = 3;
constexpr std::int32_t Value = 4;
}  // namespace ExtractionRow

// Var, Start, End, ShowSep of one field.
using LigneExtraction = std::array<Text, 4>;

class FrameExtraction final : public EditorBase, public SeparatorGroup {
 public:
  explicit FrameExtraction(UiServices& ui);

  void SetScenario(const Text& scenario);
  // Chaine, SetChaine: EditorBase; Separateur, SetSeparateur: SeparatorGroup.
  std::vector<LigneExtraction> Lignes() const;
  void SetLignes(const std::vector<LigneExtraction>& lignes);
  void InitTexte();
  bool Verification();

  CheckBox mCheckBox;

 private:
  void MajBoutons();
  void NovraFlexGrid1_EnterCell();
  void NovraFlexGrid1_ColumnAdded();
  void PlaceCheckBox();
  void mCheckBox_Click();
  void btnPreview_Click();
};

}  // namespace nv
