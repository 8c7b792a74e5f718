#pragma once
// The split and find editors: one grid row per field ("Col.", "Val.", "Var."), a field
// count and an up-down that adds and removes rows.
#include <vector>

#include "dialog/EditorBase.h"

namespace nv {

class RowFieldsEditor : public EditorBase {
 public:
  // The variable of each field row, in order; a name that is not a reference gives "".
  // Item i stands under the key i written as text.
  std::vector<Text> Colonnes() const;
  void SetColonnes(const std::vector<Text>& variables);

  Label lblTableau;
  TextBox txtFieldsCount;
  UpDown UpDown1;

 protected:
  explicit RowFieldsEditor(UiServices& ui);

  void InitGrille();
  void AjouteLigne(const Text& value, const Text& variable);
  void RemplitLigne(const Text& value, const Text& variable, std::int32_t k);
  void SupprimeLigne();
  // A Preview's results: result j to row j + 1.
  void AfficheResultats(const std::vector<TextView>& results);

 private:
  void FormateLigne(std::int32_t row);
};

}  // namespace nv
