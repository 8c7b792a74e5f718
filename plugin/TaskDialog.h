#pragma once
// The task dialog as the plug-in object opens it: set up, shown modally, read back, and
// unloaded when it is let go. The platform supplies it (a window, or a headless script).
#include <cstdint>
#include <memory>

#include "common/Text.h"

namespace nv {

class TaskDialog {
 public:
  virtual ~TaskDialog() = default;
  virtual void SetTaskStored(std::int16_t stored) = 0;
  virtual std::int16_t TaskStored() const = 0;
  virtual void SetTaskName(const Text& name) = 0;
  virtual Text TaskName() const = 0;
  virtual void SetScenarioName(const Text& scenario) = 0;
  // The first use of the window loads the dialog (its Form_Load runs) before the change.
  virtual void SetCaption(const Text& caption) = 0;
  virtual void SetPictureBorderStyle(std::int16_t style) = 0;
  // The icon resource of the module, by name, shown in the picture box.
  virtual void SetPictureIcon(const Text& resourceName) = 0;
  // Loads the dialog if it is not yet, shows it modally, and returns once it is hidden.
  virtual void ShowModal() = 0;
};

class DialogPresenter {
 public:
  virtual ~DialogPresenter() = default;
  virtual std::unique_ptr<TaskDialog> CreateTaskDialog() = 0;
};

}  // namespace nv
