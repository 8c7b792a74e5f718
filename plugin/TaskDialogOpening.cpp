// ShowWrapper and Affiche: the task dialog opened from the plug-in object.
#include <memory>

#include "plugin/ExtractionChaine.h"
#include "plugin/HostModule.h"
#include "store/ModuleState.h"

namespace nv {
namespace {

std::unique_ptr<TaskDialog> CreateDialogFor(const ExtractionChaine& plugin) {
  plugin.UseOwnRegistryContext();
  std::unique_ptr<TaskDialog> dialog = ModuleDialogs().CreateTaskDialog();
  dialog->SetTaskStored(plugin.Etat);
  dialog->SetTaskName(plugin.Nom);
  dialog->SetScenarioName(plugin.Scen);
  return dialog;
}

// Only a plain confirmed or cancelled closing is taken over.
void TakeClosing(const TaskDialog& dialog, std::int16_t& etat) {
  const std::int16_t stored = dialog.TaskStored();
  if (stored == 0 || stored == 1) etat = stored;
}

}  // namespace

std::int32_t ExtractionChaine::ShowWrapper() {
  std::unique_ptr<TaskDialog> dialog = CreateDialogFor(*this);
  dialog->SetCaption(GetTitle());
  dialog->SetPictureBorderStyle(0);
  dialog->SetPictureIcon(u"WRAPPER_ICON");
  dialog->ShowModal();
  TakeClosing(*dialog, Etat);
  Nom = dialog->TaskName();
  dialog.reset();
  return Etat;
}

std::int16_t ExtractionChaine::Affiche() {
  std::unique_ptr<TaskDialog> dialog = CreateDialogFor(*this);
  dialog->ShowModal();
  TakeClosing(*dialog, Etat);
  dialog.reset();
  return 0;
}

}  // namespace nv
