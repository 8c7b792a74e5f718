// The task dialog's checks, its save through the store, and its buttons.
#include "dialog/FrmExtractionChaine.h"

#include <memory>
#include <optional>

#include "plugin/HostModule.h"
#include "store/ModuleState.h"
#include "store/RegistryOperations.h"
#include "store/TaskStore.h"
#include "store/Texts.h"

namespace nv {

bool FrmExtractionChaine::ValidateTask() {
  if (TaskStored == 0) {
    const Text& name = txtTache.Content;
    const std::optional<TextId> message = name.empty()                 ? TextId::TaskNameMissingMessage
                                          : RegistryKeyExists(name) ? std::optional(TextId::TaskNameTakenMessage)
                                                                    : std::nullopt;
    if (message) {
      ui_.MsgBox(LoadText(*message), kMessageExclamation);
      SSTab1.SetTab(DialogTab::Parameters);
      return false;
    }
  }
  if (CBFonction.GetText().empty()) {
    ui_.MsgBox(LoadText(TextId::FunctionMissingMessage), kMessageExclamation);
    ui_.SetFocus(CBFonction);
    SSTab1.SetTab(DialogTab::Parameters);
    return false;
  }
  const std::int32_t function = CBFonction.ListIndex();
  const bool verified = function == FunctionCode::Split        ? FrameSplit1.Verification()
                        : function == FunctionCode::Substrings ? FrameExtraction1.Verification()
                                                               : FrameRecherche1.Verification();
  if (!verified) SSTab1.SetTab(function + 1);
  return verified;
}

void FrmExtractionChaine::SaveTask(const Text& taskName) {
  TaskEditorValues values;
  values.TaskStored = TaskStored != 0;
  values.Comment = txtComm.Content;
  values.Fonction = static_cast<std::int16_t>(CBFonction.ListIndex());
  switch (values.Fonction) {
    case FunctionCode::Split:
      values.Chaine = FrameSplit1.Chaine();
      values.Separateur = FrameSplit1.Separateur();
      values.Colonnes = FrameSplit1.Colonnes();
      break;
    case FunctionCode::Substrings:
      values.Chaine = FrameExtraction1.Chaine();
      values.Separateur = FrameExtraction1.Separateur();
      values.Lignes = FrameExtraction1.Lignes();
      break;
    case FunctionCode::FindValues:
      values.Chaine = FrameRecherche1.Chaine();
      values.Masque = FrameRecherche1.Masque();
      values.Filtre = FrameRecherche1.Filtre();
      values.IsTrimed = FrameRecherche1.IsTrimed();
      values.CaseSensitive = FrameRecherche1.CaseSensitive();
      values.Colonnes = FrameRecherche1.Colonnes();
      break;
    default:
      break;
  }
  nv::SaveTask(taskName, values);
}

bool FrmExtractionChaine::ValidateAndSave() {
  if (!ValidateTask()) return false;
  const Text name = txtTache.Content;
  SaveTask(name);
  TaskName = name;
  TaskStored = 1;
  return true;
}

void FrmExtractionChaine::cmdValider_Click() {
  if (ValidateAndSave()) Hide();
}

void FrmExtractionChaine::cmdApp_Click() { ValidateAndSave(); }

// What Apply saved stays saved.
void FrmExtractionChaine::cmdAnnuler_Click() {
  TaskStored = 0;
  Hide();
}

void FrmExtractionChaine::cmdHelp_Click() {
  const std::unique_ptr<ActionsEditor> editor = ModuleServices().CreateActionsEditor();
  editor->SetScenarioName(ScenarioName);
  editor->ShowHelp(kWrapperType);
}

}  // namespace nv
