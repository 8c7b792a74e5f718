#pragma once
// The task dialog on Windows: a form over the control layer, shown in a window of its
// own while the opener waits.
#include <windows.h>

#include <functional>
#include <memory>

#include "dialog/FormTaskDialog.h"
#include "platform/win32/dialog/TaskDialogWindow.h"
#include "platform/win32/dialog/Win32UiServices.h"

namespace nv::win {

class WindowsDialogPresenter final : public DialogPresenter {
 public:
  // Told of each dialog once its window is up, on the dialog's thread (tools and tests).
  using ShownHook = std::function<void(const ShownTaskDialog&)>;

  // `resources`: the module whose icons the picture box shows.
  explicit WindowsDialogPresenter(HMODULE resources) : resources_(resources) {}

  std::unique_ptr<TaskDialog> CreateTaskDialog() override;

  void OnShown(ShownHook hook) { shown_ = std::move(hook); }

 private:
  HMODULE resources_;
  Win32UiServices ui_;
  ShownHook shown_;
};

}  // namespace nv::win
