#include "tests/windialog/DialogSession.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <thread>

#include "plugin/ExtractionChaine.h"
#include "platform/win32/dialog/TaskDialogWindow.h"
#include "platform/win32/dialog/WindowHandles.h"
#include "plugin/HostModule.h"
#include "store/ModuleState.h"

namespace nv::uitest {
namespace {

constexpr DWORD kShownWithinMs = 15000;
constexpr DWORD kClosedAfterScriptMs = 3000;
constexpr DWORD kSessionLimitMs = 90000;

// An event for the length of one session.
class Event {
 public:
  void Set() const { SetEvent(handle_.get()); }
  bool Wait(DWORD ms) const { return WaitForSingleObject(handle_.get(), ms) == WAIT_OBJECT_0; }

 private:
  win::unique_kernel_handle handle_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

}  // namespace

void DialogSession::SetUp() {
  HostTest::SetUp();
  // The plug-in's icon comes from the DLL built beside the suite, read as resources only.
  resources_ = LoadLibraryExW(L"NVextch.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
  presenter_ = std::make_unique<win::WindowsDialogPresenter>(resources_);
  HostModule().PlatformDialogs = presenter_.get();
}

void DialogSession::TearDown() {
  HostModule().PlatformDialogs = nullptr;
  presenter_.reset();
  if (resources_) FreeLibrary(resources_);
  HostTest::TearDown();
}

void PlayWhileOpen(const std::function<void()>& open, const std::function<HWND()>& findDialog,
                   const std::function<void(DialogDriver&)>& play, UiThreadActions* actions) {
  const DWORD uiThread = GetCurrentThreadId();
  Event finished;
  std::thread person([&] {
    const HWND window = findDialog();
    if (!window) {
      ADD_FAILURE() << "the dialog did not open";
      return;
    }
    DialogDriver driver(window, uiThread, actions);
    play(driver);
    if (!finished.Wait(kClosedAfterScriptMs)) {
      ADD_FAILURE() << "the dialog was still open when the person was done";
      CloseEverything(uiThread);
    }
  });
  std::thread watchdog([&] {
    if (finished.Wait(kSessionLimitMs)) return;
    ADD_FAILURE() << "the dialog session ran over its time";
    CloseEverything(uiThread);
    if (!finished.Wait(10000)) {
      std::fprintf(stderr, "the dialog would not close: giving up\n");
      std::_Exit(3);
    }
  });
  open();
  finished.Set();
  person.join();
  watchdog.join();
}

HWND WaitForTaskDialog(DWORD uiThread) {
  for (DWORD waited = 0; waited < kShownWithinMs; waited += 20) {
    const HWND found = FindWindowW(win::TaskDialogWindow::kClassName, nullptr);
    if (found && IsWindowVisible(found) && GetWindowThreadProcessId(found, nullptr) == uiThread) return found;
    Sleep(20);
  }
  return nullptr;
}

std::int32_t DialogSession::Play(const Text& task, std::int16_t etat, std::int32_t language, const Script& script) {
  Event shown;
  HWND window = nullptr;
  FrmExtractionChaine* form = nullptr;
  UiThreadActions actions;
  presenter_->OnShown([&](const win::ShownTaskDialog& dialog) {
    form = &dialog.form;
    window = dialog.window;
    actions.Attach(dialog);
    shown.Set();
  });
  std::int32_t result = -1;
  PlayWhileOpen(
      [&] {
        ExtractionChaine plugin;
        plugin.InitializeProperties(task, u"S", language);
        plugin.Etat = etat;
        try {
          result = plugin.ShowWrapper();
        } catch (const std::exception& error) {
          ADD_FAILURE() << "ShowWrapper failed: " << error.what();
        }
      },
      [&] { return shown.Wait(kShownWithinMs) ? window : nullptr; },
      [&](DialogDriver& driver) { script(driver, *form); }, &actions);
  presenter_->OnShown({});
  return result;
}

}  // namespace nv::uitest
