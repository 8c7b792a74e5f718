#pragma once
// Plays a person at the task dialog from a second thread: finds its windows by control
// identifier and gives them the input a keyboard and a mouse would, through the dialog's
// own message queue. Settle() waits until the dialog has handled everything given so far.
#include "platform/win32/com/WindowsSdk.h"

#include <functional>
#include <string>
#include <vector>

#include "tests/windialog/UiThreadActions.h"

namespace nv::uitest {

class DialogDriver {
 public:
  // `actions`: the way onto the dialog's thread, for a dialog shown in this process.
  DialogDriver(HWND dialog, DWORD uiThread, UiThreadActions* actions = nullptr)
      : dialog_(dialog), uiThread_(uiThread), actions_(actions) {}

  HWND Dialog() const noexcept { return dialog_; }
  HWND Find(int id) const;
  // Runs `action` on the dialog's thread as one of its events, and waits for it (an
  // in-process session, whose actions the driver was given).
  void OnUiThread(const std::function<void()>& action) const;
  // Waits until the dialog has handled everything given so far. A few rounds: a key
  // handled posts the character it makes, and that one may post more.
  void Settle() const;

  void ClickAt(HWND window, POINT point) const;
  void ClickControl(int id) const;  // the middle of the control: buttons, edits
  void Press(int id) const;         // BM_CLICK
  void Type(const std::wstring& text) const;  // characters to whichever window has the focus
  void Key(WPARAM virtualKey) const;         // a key down and up on the focused window
  void Alt(wchar_t letter) const;            // Alt and a letter: a control's accelerator
  void Choose(int comboId, int index) const;
  void ClickTab(const std::wstring& caption) const;
  void ClickUpDown(int id, bool up) const;
  void ClickCell(int gridId, int row, int col) const;

  std::wstring Text(int id) const;
  std::wstring Cell(int gridId, int row, int col) const;
  int GridRows(int gridId) const;
  int GridCols(int gridId) const;
  std::vector<std::wstring> TabCaptions() const;
  HWND Focused() const;
  bool Enabled(int id) const { return IsWindowEnabled(Find(id)) != FALSE; }
  bool Checked(int id) const { return SendMessageW(Find(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }

  // The message box (or other dialog box) the dialog shows, waited for; the text of its
  // item `textId` (a message box's prompt by default). OK closes it.
  std::wstring AnswerMessageBox(int textId = 0xFFFF) const;

 private:
  HWND FocusedOrDialog() const;
  // Waits for `done` while the dialog lives; false when it timed out meanwhile.
  bool WaitWhileShown(HANDLE done) const;

  HWND dialog_;
  DWORD uiThread_;
  UiThreadActions* actions_;
};

// A grid cell's rectangle in the grid's client area, read from any process; false when
// the cell is not shown.
bool CellRectOf(HWND grid, int row, int col, RECT& cell);

// The visible dialog box (a message box, a dialog made from a template) that the thread
// shows; null when there is none.
HWND DialogBoxOf(DWORD thread);

// Closes whatever the thread still shows (message boxes, then dialogs): used when a test
// lost its way, so that the modal loop it waits on ends.
void CloseEverything(DWORD uiThread);

}  // namespace nv::uitest
