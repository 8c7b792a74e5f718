#pragma once
// The suite's way onto the dialog's thread: work handed over from the person's thread
// runs there as one of the dialog's user events. Installed on a dialog shown in this
// process, through the presenter's shown hook; no product code holds it.
#include "platform/win32/com/WindowsSdk.h"

#include <deque>
#include <functional>
#include <mutex>

#include "platform/win32/dialog/TaskDialogWindow.h"

namespace nv::uitest {

class UiThreadActions {
 public:
  UiThreadActions();
  UiThreadActions(const UiThreadActions&) = delete;
  UiThreadActions& operator=(const UiThreadActions&) = delete;

  // On the dialog's thread, from the shown hook: the dialog now runs what is posted here.
  void Attach(const win::ShownTaskDialog& shown);
  // From any thread: `action` runs on the dialog's thread after the messages posted
  // before it. False when the dialog is gone (the action is then dropped).
  bool Post(std::function<void()> action);
  // Forgets what still waits (a person who stopped waiting for it).
  void Drop();

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data);
  void RunWaiting();

  const UINT runMessage_;
  std::mutex lock_;
  HWND dialog_ = nullptr;
  std::function<void(const std::function<void()>&)> runUserEvent_;
  std::deque<std::function<void()>> waiting_;
};

}  // namespace nv::uitest
