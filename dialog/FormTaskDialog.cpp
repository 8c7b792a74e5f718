#include "dialog/FormTaskDialog.h"

namespace nv {

// Touching the window loads the form first, as the opener's steps expect.
void FormTaskDialog::SetCaption(const Text& caption) {
  form_.Load();
  form_.Caption = caption;
}

void FormTaskDialog::SetPictureBorderStyle(std::int16_t style) {
  form_.Load();
  form_.Picture1.BorderStyle = style;
}

void FormTaskDialog::SetPictureIcon(const Text& resourceName) {
  form_.Load();
  form_.Picture1.Picture = resourceName;
}

void FormTaskDialog::ShowModal() {
  form_.Load();
  form_.Visible = true;
  if (modal_) modal_(form_);
}

}  // namespace nv
