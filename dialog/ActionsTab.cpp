#include "dialog/ActionsTab.h"

#include <memory>

#include "plugin/HostModule.h"
#include "store/ActionsLayout.h"
#include "store/Texts.h"

namespace nv {

ActionsTab::ActionsTab(const std::int16_t& taskStored, const Text& taskName, const Text& scenarioName)
    : taskStored_(taskStored), taskName_(taskName), scenarioName_(scenarioName) {
  grdAc.SetCols(4);
  grdAc.SetRows(2);
  grdAc.FixedRows = 1;
  grdAc.FixedCols = 0;
  cmdAcA.OnClick = [this] { cmdAcA_Click(); };
  cmdAcM.OnClick = [this] { cmdAcM_Click(); };
  cmdAcS.OnClick = [this] { cmdAcS_Click(); };
}

void ActionsTab::ApplyCaptions() {
  cmdAcA.Caption = LoadText(TextId::AddActionButton);
  cmdAcM.Caption = LoadText(TextId::ModifyActionButton);
  cmdAcS.Caption = LoadText(TextId::DeleteActionButton);
}

void ActionsTab::FillActionsGrid() {
  grdAc.Clear();
  grdAc.SetRows(2);
  constexpr std::int32_t widths[] = {2600, 1600, 2900, 1100};
  for (std::int32_t col = 0; col < 4; ++col) grdAc.SetColWidth(col, widths[col]);
  grdAc.SetTextMatrix(0, ActionsColumn::Continuation, LoadText(TextId::ActionsRunScenarioHeading));
  grdAc.SetTextMatrix(0, ActionsColumn::Variable, LoadText(TextId::ActionsVariableHeading));
  grdAc.SetTextMatrix(0, ActionsColumn::Value, LoadText(TextId::ActionsValueHeading));
  ListTaskActions(*PrepareActionsEditor(taskName_, scenarioName_, true), [this](const ListedAction& action, std::int32_t r) {
    // A position that skips numbers still gets its own row; the rows between stay empty.
    while (grdAc.Rows() - 1 < r) {
      grdAc.SetRows(grdAc.Rows() + 1);
      grdAc.Refresh();
    }
    grdAc.SetRow(r);
    const Text* texts[] = {&action.label, &action.continuation, &action.variable, &action.value};
    for (std::int32_t col = 0; col < 4; ++col) {
      grdAc.SetCol(col);
      grdAc.SetText(*texts[col]);
    }
    grdAc.SetRowData(r, action.type);
  });
}

bool ActionsTab::OnActionRow() const { return !grdAc.TextMatrix(grdAc.Row(), ActionsColumn::Continuation).empty(); }

void ActionsTab::cmdAcA_Click() {
  if (taskStored_ == 0) return;
  {
    const std::unique_ptr<ActionsEditor> editor = PrepareActionsEditor(taskName_, scenarioName_, false);
    editor->AddAction();
  }
  FillActionsGrid();
}

void ActionsTab::cmdAcM_Click() {
  if (taskStored_ == 0 || !OnActionRow()) return;
  const std::unique_ptr<ActionsEditor> editor = PrepareActionsEditor(taskName_, scenarioName_, true);
  Text continuation;
  Text variable;
  Text value;
  const std::int32_t row = grdAc.Row();
  editor->ModifyAction(continuation, variable, value, grdAc.RowData(row));
  grdAc.SetTextMatrix(row, ActionsColumn::Continuation, continuation);
  grdAc.SetTextMatrix(row, ActionsColumn::Variable, variable);
  grdAc.SetTextMatrix(row, ActionsColumn::Value, value);
}

void ActionsTab::cmdAcS_Click() {
  if (taskStored_ == 0 || !OnActionRow()) return;
  {
    const std::unique_ptr<ActionsEditor> editor = PrepareActionsEditor(taskName_, scenarioName_, false);
    editor->DeleteAction(grdAc.RowData(grdAc.Row()));
  }
  FillActionsGrid();
}

}  // namespace nv
