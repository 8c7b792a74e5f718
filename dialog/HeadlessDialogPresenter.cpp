#include "dialog/HeadlessDialogPresenter.h"

namespace nv {

std::unique_ptr<TaskDialog> HeadlessDialogPresenter::CreateTaskDialog() {
  return std::make_unique<FormTaskDialog>(ui_, [this](FrmExtractionChaine& form) {
    if (script_) script_(form);
    leftOpen_ = form.Visible;
  });
}

}  // namespace nv
