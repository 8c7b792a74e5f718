#pragma once
// The actions tab of the task dialog: the grid of the task's follow-up actions and the
// buttons that have the host's actions editor add, modify and delete them.
#include <cstdint>

#include "dialog/SimpleControls.h"
#include "dialog/StandardGrid.h"

namespace nv {

namespace ActionsColumn {
constexpr std::int32_t Label = 0;
constexpr std::int32_t Continuation = 1;
constexpr std::int32_t Variable = 2;
constexpr std::int32_t Value = 3;
}  // namespace ActionsColumn

class ActionsTab {
 public:
  // The dialog's own state, read at each press: the buttons act only on a stored task.
  ActionsTab(const std::int16_t& taskStored, const Text& taskName, const Text& scenarioName);
  ActionsTab(const ActionsTab&) = delete;
  ActionsTab& operator=(const ActionsTab&) = delete;

  void ApplyCaptions();
  void FillActionsGrid();

  StandardGrid grdAc;
  Button cmdAcA;
  Button cmdAcM;
  Button cmdAcS;

 private:
  void cmdAcA_Click();
  void cmdAcM_Click();
  void cmdAcS_Click();
  // The current row holds an action (its continuation text is not empty).
  bool OnActionRow() const;

  const std::int16_t& taskStored_;
  const Text& taskName_;
  const Text& scenarioName_;
};

}  // namespace nv
