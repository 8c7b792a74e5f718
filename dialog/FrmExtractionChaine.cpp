// The task dialog's opening: controls, captions, the stored task loaded into its editor,
// the function tabs and the keyboard.
#include "dialog/FrmExtractionChaine.h"

#include <vector>

#include "dialog/CenterForm.h"
#include "store/TaskStore.h"
#include "store/Texts.h"

namespace nv {
namespace {

constexpr std::int16_t kEnter = 13;

bool IsListedFunction(std::int16_t code) { return code >= FunctionCode::Split && code <= FunctionCode::FindValues; }

std::vector<Text> FieldVariables(const std::vector<TaskField>& fields) {
  std::vector<Text> variables;
  for (const TaskField& field : fields) variables.push_back(field.Var);
  return variables;
}

std::vector<LigneExtraction> FieldLines(const std::vector<TaskField>& fields) {
  std::vector<LigneExtraction> lines;
  for (const TaskField& field : fields) lines.push_back({field.Var, field.Start, field.End, field.ShowSep});
  return lines;
}

}  // namespace

FrmExtractionChaine::FrmExtractionChaine(UiServices& ui)
    : FrameSplit1(ui), FrameExtraction1(ui), FrameRecherche1(ui), Actions(TaskStored, TaskName, ScenarioName), ui_(ui) {
  Visible = false;
  Width = 9600;
  Height = 7200;
  CBFonction.OnClick = [this] { CBFonction_Click(); };
  cmdValider.OnClick = [this] { cmdValider_Click(); };
  cmdApp.OnClick = [this] { cmdApp_Click(); };
  cmdAnnuler.OnClick = [this] { cmdAnnuler_Click(); };
  cmdHelp.OnClick = [this] { cmdHelp_Click(); };
}

void FrmExtractionChaine::Load() {
  if (loaded_) return;
  loaded_ = true;
  Form_Load();
}

void FrmExtractionChaine::Form_Load() {
  CenterForm(*this, ui_);
  ApplyCaptions();
  Caption = LoadText(TextId::Title);
  FrameSplit1.SetScenario(ScenarioName);
  FrameExtraction1.SetScenario(ScenarioName);
  FrameRecherche1.SetScenario(ScenarioName);
  if (TaskStored == 0) {
    CBFonction.SetListIndex(FunctionCode::Split);
    ShowFunctionTab(FunctionCode::Split);
  } else if (TaskStored == 1) {
    LoadStoredTask();
  }
  SSTab1.SetTab(DialogTab::Parameters);
  txtTache.Content = TaskName;
  txtTache.Enabled = false;
  SSTab1.SetTabEnabled(SSTab1.Tabs() - 1, false);
  SSTab1.SetTabEnabled(SSTab1.Tabs() - 2, false);
}

void FrmExtractionChaine::LoadStoredTask() {
  LoadTaskDefinition(TaskName, Definition);
  FillActionsGrid();
  txtComm.Content = Definition.Comment;
  // A code the list cannot show opens like a task without a function: nothing selected,
  // no editor filled, and the user may pick one.
  const std::int16_t function = IsListedFunction(Definition.Fonction) ? Definition.Fonction : std::int16_t{-1};
  CBFonction.SetListIndex(function);
  ShowFunctionTab(function);
  switch (function) {
    case FunctionCode::Split:
      FrameSplit1.SetChaine(Definition.Chaine);
      FrameSplit1.SetSeparateur(Definition.Separateur);
      FrameSplit1.SetColonnes(FieldVariables(Definition.Fields));
      break;
    case FunctionCode::Substrings:
      FrameExtraction1.SetChaine(Definition.Chaine);
      FrameExtraction1.SetSeparateur(Definition.Separateur);
      FrameExtraction1.SetLignes(FieldLines(Definition.Fields));
      break;
    case FunctionCode::FindValues:
      FrameRecherche1.SetChaine(Definition.Chaine);
      FrameRecherche1.SetMasque(Definition.Masque);
      FrameRecherche1.SetFiltre(Definition.Filtre);
      FrameRecherche1.SetTrimed(Definition.Trim);
      FrameRecherche1.SetCaseSensitive(Definition.CaseSensitive);
      FrameRecherche1.SetColonnes(FieldVariables(Definition.Fields));
      break;
    default:
      break;
  }
}

void FrmExtractionChaine::ApplyCaptions() {
  cmdValider.Caption = LoadText(TextId::ConfirmButton);
  cmdApp.Caption = LoadText(TextId::ApplyButton);
  cmdAnnuler.Caption = LoadText(TextId::CancelButton);
  Actions.ApplyCaptions();
  constexpr TextId tabCaptions[DialogTab::Count] = {TextId::ParametersTab,          TextId::SplitFunctionName,
                                                    TextId::SubstringsFunctionName, TextId::FindValuesFunctionName,
                                                    TextId::CommentTab,             TextId::ActionsTab};
  for (std::int32_t tab = 0; tab < DialogTab::Count; ++tab) SSTab1.SetTabCaption(tab, LoadText(tabCaptions[tab]));
  Label1.Caption = LoadText(TextId::FunctionLabel);
  Label5.Caption = LoadText(TextId::TaskNameLabel);
  CBFonction.Clear();
  CBFonction.AddItem(LoadText(TextId::SplitFunctionName), 0);
  CBFonction.AddItem(LoadText(TextId::SubstringsFunctionName), 1);
  CBFonction.AddItem(LoadText(TextId::FindValuesFunctionName), 2);
}

void FrmExtractionChaine::ShowFunctionTab(std::int32_t index) {
  for (std::int32_t tab = 1; tab <= 3; ++tab) SSTab1.SetTabEnabled(tab, false);
  SSTab1.SetTabEnabled(index + 1, true);
}

void FrmExtractionChaine::CBFonction_Click() { ShowFunctionTab(CBFonction.ListIndex()); }

void FrmExtractionChaine::Form_KeyPress(std::int16_t& KeyAscii) {
  if (KeyAscii != kEnter) return;
  KeyAscii = 0;
  ui_.SendTabKey();
}

}  // namespace nv
