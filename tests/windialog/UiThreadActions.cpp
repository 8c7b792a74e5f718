#include "tests/windialog/UiThreadActions.h"

#include <commctrl.h>

namespace nv::uitest {

UiThreadActions::UiThreadActions() : runMessage_(RegisterWindowMessageW(L"NvTest.RunWaitingActions")) {}

void UiThreadActions::Attach(const win::ShownTaskDialog& shown) {
  {
    const std::lock_guard<std::mutex> guard(lock_);
    dialog_ = shown.window;
    runUserEvent_ = shown.runUserEvent;
  }
  SetWindowSubclass(shown.window, &UiThreadActions::Procedure, 7, reinterpret_cast<DWORD_PTR>(this));
}

bool UiThreadActions::Post(std::function<void()> action) {
  HWND dialog = nullptr;
  {
    const std::lock_guard<std::mutex> guard(lock_);
    if (!dialog_) return false;
    dialog = dialog_;
    waiting_.push_back(std::move(action));
  }
  if (PostMessageW(dialog, runMessage_, 0, 0)) return true;
  Drop();
  return false;
}

void UiThreadActions::Drop() {
  const std::lock_guard<std::mutex> guard(lock_);
  waiting_.clear();
}

void UiThreadActions::RunWaiting() {
  std::function<void()> action;
  std::function<void(const std::function<void()>&)> run;
  {
    const std::lock_guard<std::mutex> guard(lock_);
    if (waiting_.empty()) return;
    action = std::move(waiting_.front());
    waiting_.pop_front();
    run = runUserEvent_;
  }
  run(action);
}

LRESULT CALLBACK UiThreadActions::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data) {
  auto* self = reinterpret_cast<UiThreadActions*>(data);
  if (message == self->runMessage_) {
    self->RunWaiting();
    return 0;
  }
  if (message == WM_NCDESTROY) {
    {
      const std::lock_guard<std::mutex> guard(self->lock_);
      self->dialog_ = nullptr;
      self->waiting_.clear();
    }
    RemoveWindowSubclass(window, &UiThreadActions::Procedure, 7);
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace nv::uitest
