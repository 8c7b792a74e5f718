#pragma once
// The task dialog opened by the plug-in object in this process, on the real registry and
// the stand-in host, while a second thread plays the person in front of it. A watchdog
// closes whatever is left open, so that a lost test fails instead of hanging.
#include "platform/win32/com/WindowsSdk.h"

#include <functional>
#include <memory>

#include "dialog/FrmExtractionChaine.h"
#include "platform/win32/dialog/WindowsDialogPresenter.h"
#include "tests/support/HostFixture.h"
#include "tests/windialog/DialogDriver.h"

namespace nv::uitest {

// `form` is for arranging what a picture needs; a person's steps go through the driver.
using Script = std::function<void(DialogDriver& driver, FrmExtractionChaine& form)>;

// Runs `open` on this thread, which shows the dialog modally and returns once it closed,
// while a second thread waits for `findDialog` to give the window and plays `play` on it.
// A watchdog closes what is left open; a dialog still open after `play` fails the test.
// `actions`: the way onto the dialog's thread, when it is shown in this process.
void PlayWhileOpen(const std::function<void()>& open, const std::function<HWND()>& findDialog,
                   const std::function<void(DialogDriver&)>& play, UiThreadActions* actions = nullptr);

// The task dialog shown by this thread, waited for a while; null when none came.
HWND WaitForTaskDialog(DWORD uiThread);

class DialogSession : public test::HostTest {
 public:
  void SetUp() override;
  void TearDown() override;

  // Opens the dialog of `task` through ShowWrapper and plays `script`; ShowWrapper's result.
  std::int32_t Play(const Text& task, std::int16_t etat, std::int32_t language, const Script& script);

 private:
  HMODULE resources_ = nullptr;
  std::unique_ptr<win::WindowsDialogPresenter> presenter_;
};

}  // namespace nv::uitest
