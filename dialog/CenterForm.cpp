#include "dialog/CenterForm.h"

namespace nv {

void CenterForm(Control& form, UiServices& ui) {
  const ScreenSize screen = ui.GetScreenSize();
  form.Top = CentredOffset(screen.Height, form.Height);
  form.Left = CentredOffset(screen.Width, form.Width);
}

}  // namespace nv
