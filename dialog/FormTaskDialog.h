#pragma once
// The task dialog's form behind the interface the plug-in object opens it through. The
// platform gives the modal part: a window's message loop, or a script run headless.
#include <functional>

#include "dialog/FrmExtractionChaine.h"
#include "plugin/TaskDialog.h"

namespace nv {

// Runs while the form is shown; a window's loop returns once the form is hidden.
using ModalLoop = std::function<void(FrmExtractionChaine&)>;

class FormTaskDialog final : public TaskDialog {
 public:
  FormTaskDialog(UiServices& ui, ModalLoop modal) : form_(ui), modal_(std::move(modal)) {}

  void SetTaskStored(std::int16_t stored) override { form_.TaskStored = stored; }
  std::int16_t TaskStored() const override { return form_.TaskStored; }
  void SetTaskName(const Text& name) override { form_.TaskName = name; }
  Text TaskName() const override { return form_.TaskName; }
  void SetScenarioName(const Text& scenario) override { form_.ScenarioName = scenario; }
  void SetCaption(const Text& caption) override;
  void SetPictureBorderStyle(std::int16_t style) override;
  void SetPictureIcon(const Text& resourceName) override;
  void ShowModal() override;

  FrmExtractionChaine& Form() noexcept { return form_; }

 private:
  FrmExtractionChaine form_;
  ModalLoop modal_;
};

}  // namespace nv
