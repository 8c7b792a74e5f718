#include "dialog/RowFieldsEditor.h"

#include "plugin/VariableAccess.h"

namespace nv {

RowFieldsEditor::RowFieldsEditor(UiServices& ui) : EditorBase(ui) {
  FlexGrid& grid = NovraFlexGrid1;
  grid.NumeroteLignes = false;
  grid.ShowPlusMoins = false;
  grid.ShowInsertMenus = false;
  grid.ShowMonterDescendre = false;
  grid.AllowInsertKey = false;
  grid.Mode = 1;
  SurveilleCellulesVariables([this] { return NovraFlexGrid1.Col() == 2 && NovraFlexGrid1.Row() >= 1; });
  UpDown1.OnUpClick = [this] { AjouteLigne({}, {}); };
  UpDown1.OnDownClick = [this] {
    if (NovraFlexGrid1.Rows() >= 2) SupprimeLigne();
  };
  // The count is shown, never typed.
  txtFieldsCount.OnGotFocus = [this] { ui_.SetFocus(UpDown1); };
  btnClear.OnClick = [this] {
    for (std::int32_t i = 1; i < NovraFlexGrid1.Rows(); ++i) NovraFlexGrid1.SetTextMatrix(i, 2, {});
  };
}

void RowFieldsEditor::InitGrille() {
  FlexGrid& grid = NovraFlexGrid1;
  grid.SetCols(3);
  grid.SetRows(1);
  grid.FixedRows = 1;
  grid.FixedCols = 2;
  grid.SetColWidth(0, 400);
  grid.SetTextMatrix(0, 0, u"Col.");
  grid.SetTextMatrix(0, 1, u"Val.");
  grid.SetTextMatrix(0, 2, u"Var.");
  txtFieldsCount.Content = Text(u"0");
}

void RowFieldsEditor::FormateLigne(std::int32_t row) {
  FlexGrid& grid = NovraFlexGrid1;
  grid.SetRow(row);
  for (std::int32_t col = 0; col < 3; ++col) {
    grid.SetCol(col);
    grid.Inner().SetCellAlignment(col < 2 ? CellAlignment::CenterCenter : CellAlignment::LeftCenter);
  }
  txtFieldsCount.Content = DecimalText(row);
  grid.Reset = false;
  grid.SetCol(0);
}

void RowFieldsEditor::AjouteLigne(const Text& value, const Text& variable) {
  FlexGrid& grid = NovraFlexGrid1;
  const std::int32_t n = grid.Rows();
  grid.SetRows(n + 1);
  grid.SetTextMatrix(n, 0, DecimalText(n));
  if (!value.empty()) grid.SetTextMatrix(n, 1, value);
  if (!variable.empty()) grid.SetTextMatrix(n, 2, variable);
  FormateLigne(n);
}

void RowFieldsEditor::RemplitLigne(const Text& value, const Text& variable, std::int32_t k) {
  FlexGrid& grid = NovraFlexGrid1;
  if (grid.Rows() < k + 1) grid.SetRows(k + 1);
  grid.SetTextMatrix(k, 0, DecimalText(k));
  if (!value.empty()) grid.SetTextMatrix(k, 1, value);
  if (grid.TextMatrix(k, 2).empty() && !variable.empty()) grid.SetTextMatrix(k, 2, variable);
  FormateLigne(k);
}

void RowFieldsEditor::SupprimeLigne() {
  FlexGrid& grid = NovraFlexGrid1;
  const std::int32_t n = grid.Rows();
  grid.SetRows(n - 1);
  txtFieldsCount.Content = DecimalText(n - 2);
  grid.Reset = false;
  grid.SetCol(0);
}

void RowFieldsEditor::AfficheResultats(const std::vector<TextView>& results) {
  for (std::size_t j = 0; j < results.size(); ++j) {
    RemplitLigne(Text(results[j]), {}, static_cast<std::int32_t>(j + 1));
  }
  NovraFlexGrid1.Reset = false;
}

std::vector<Text> RowFieldsEditor::Colonnes() const {
  std::vector<Text> variables;
  for (std::int32_t i = 1; i < NovraFlexGrid1.Rows(); ++i) {
    const Text& cell = NovraFlexGrid1.TextMatrix(i, 2);
    variables.push_back(IsVariableReference(cell) ? cell : Text());
  }
  return variables;
}

void RowFieldsEditor::SetColonnes(const std::vector<Text>& variables) {
  NovraFlexGrid1.SetRows(1);
  for (const Text& variable : variables) AjouteLigne({}, variable);
}

}  // namespace nv
