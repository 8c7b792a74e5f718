#pragma once
// The task dialog: the function list and its three editors, the comment, the actions tab,
// and the buttons that check and save the task.
#include <cstdint>

#include "dialog/ActionsTab.h"
#include "dialog/FormControls.h"
#include "dialog/FrameExtraction.h"
#include "dialog/FrameRecherche.h"
#include "dialog/FrameSplit.h"
#include "store/TaskDefinition.h"

namespace nv {

namespace DialogTab {
constexpr std::int32_t Parameters = 0;
constexpr std::int32_t Comment = 4;
constexpr std::int32_t Actions = 5;
constexpr std::int32_t Count = 6;
}  // namespace DialogTab

class FrmExtractionChaine final : public Control {
 public:
  explicit FrmExtractionChaine(UiServices& ui);

  // Set by the opener before the dialog loads; read back once it is hidden. TaskStored:
  // 1 stored task, 0 new task; after a closing, 1 confirmed, 0 cancelled.
  std::int16_t TaskStored = 0;
  Text TaskName;
  Text ScenarioName;
  Text Caption;
  TaskDefinition Definition;

  // The first use of the window loads the dialog; later uses find it loaded.
  void Load();
  bool Loaded() const noexcept { return loaded_; }
  void Hide() { Visible = false; }

  void ApplyCaptions();
  // Only the editor tab of `index` (0 to 2) stays available among tabs 1 to 3.
  void ShowFunctionTab(std::int32_t index);
  bool ValidateTask();
  void SaveTask(const Text& taskName);
  void FillActionsGrid() { Actions.FillActionsGrid(); }
  // The dialog sees keys before its controls; a key of 0 is discarded.
  void Form_KeyPress(std::int16_t& KeyAscii);

  TabControl SSTab1{DialogTab::Count};
  Label Label5;
  TextBox txtTache;
  Frame Frame1;
  Label Label1;
  ComboBox CBFonction;
  PictureBox Picture1;
  FrameSplit FrameSplit1;
  FrameExtraction FrameExtraction1;
  FrameRecherche FrameRecherche1;
  TextBox txtComm;
  ActionsTab Actions;
  Button cmdValider;
  Button cmdApp;
  Button cmdAnnuler;
  Button cmdHelp;

 private:
  void Form_Load();
  void LoadStoredTask();
  void CBFonction_Click();
  void cmdValider_Click();
  void cmdApp_Click();
  void cmdAnnuler_Click();
  void cmdHelp_Click();
  // The checks, the save, and the name taken over; false when a check failed.
  bool ValidateAndSave();

  UiServices& ui_;
  bool loaded_ = false;
};

}  // namespace nv
