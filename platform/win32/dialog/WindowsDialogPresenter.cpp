#include "platform/win32/dialog/WindowsDialogPresenter.h"

#include "platform/win32/dialog/TaskDialogWindow.h"

namespace nv::win {

std::unique_ptr<TaskDialog> WindowsDialogPresenter::CreateTaskDialog() {
  return std::make_unique<FormTaskDialog>(ui_, [this](FrmExtractionChaine& form) {
    TaskDialogWindow window(form, ui_, resources_);
    window.RunModal(shown_);
  });
}

}  // namespace nv::win
