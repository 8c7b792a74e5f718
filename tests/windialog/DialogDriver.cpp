#include "tests/windialog/DialogDriver.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <thread>

#include "platform/win32/dialog/GridWindow.h"
#include "platform/win32/dialog/TaskDialogIds.h"
#include "platform/win32/dialog/TaskDialogWindow.h"
#include "platform/win32/dialog/WindowHandles.h"

namespace nv::uitest {
namespace {

constexpr DWORD kWaitMs = 10000;

HWND FindDescendant(HWND parent, int id) {
  struct Search {
    int id;
    HWND found;
  } search{id, nullptr};
  EnumChildWindows(
      parent,
      [](HWND window, LPARAM data) CALLBACK -> BOOL {
        auto* s = reinterpret_cast<Search*>(data);
        if (GetDlgCtrlID(window) != s->id) return TRUE;
        s->found = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

std::wstring WindowText(HWND window) {
  wchar_t text[1024] = {};
  SendMessageTimeoutW(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG, kWaitMs, nullptr);
  return text;
}

}  // namespace

bool CellRectOf(HWND grid, int row, int col, RECT& cell) {
  const LRESULT topLeft = SendMessageW(grid, win::GridWindow::kGetCellTopLeft, MAKEWPARAM(row, col), 0);
  const LRESULT bottomRight = SendMessageW(grid, win::GridWindow::kGetCellBottomRight, MAKEWPARAM(row, col), 0);
  if (topLeft == -1 || bottomRight == -1) return false;
  cell = {static_cast<short>(LOWORD(topLeft)), static_cast<short>(HIWORD(topLeft)), static_cast<short>(LOWORD(bottomRight)),
          static_cast<short>(HIWORD(bottomRight))};
  return true;
}

HWND DialogBoxOf(DWORD thread) {
  HWND found = nullptr;
  EnumThreadWindows(
      thread,
      [](HWND window, LPARAM data) CALLBACK -> BOOL {
        wchar_t name[16] = {};
        GetClassNameW(window, name, 16);
        if (std::wstring(name) != L"#32770" || !IsWindowVisible(window)) return TRUE;
        *reinterpret_cast<HWND*>(data) = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

HWND DialogDriver::Find(int id) const {
  const HWND found = FindDescendant(dialog_, id);
  EXPECT_NE(found, nullptr) << "no control " << id;
  return found;
}

bool DialogDriver::WaitWhileShown(HANDLE done) const {
  // A dialog that closes meanwhile drops what was posted to it.
  DWORD waited = WAIT_TIMEOUT;
  for (DWORD spent = 0; spent < kWaitMs && waited == WAIT_TIMEOUT && IsWindow(dialog_); spent += 20) {
    waited = WaitForSingleObject(done, 20);
  }
  if (!IsWindow(dialog_)) return true;  // nothing is left to settle
  EXPECT_EQ(waited, WAIT_OBJECT_0) << "the dialog did not handle its messages in time";
  return waited == WAIT_OBJECT_0;
}

void DialogDriver::OnUiThread(const std::function<void()>& action) const {
  if (!actions_) {
    ADD_FAILURE() << "no way onto the dialog's thread: the dialog is not in this process";
    return;
  }
  const win::unique_kernel_handle done(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  const HANDLE event = done.get();
  if (!actions_->Post([&action, event] {
        action();
        SetEvent(event);
      })) {
    return;  // the dialog is gone
  }
  // An action left waiting must never run once `action` and `done` are gone.
  if (!WaitWhileShown(event)) actions_->Drop();
}

void DialogDriver::Settle() const {
  // A fresh event each round, so that no round is answered by the one before.
  for (int round = 0; round < 3; ++round) {
    const win::unique_kernel_handle reached(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!PostMessageW(dialog_, win::TaskDialogWindow::kSignalWhenReached, 0,
                      reinterpret_cast<LPARAM>(reached.get()))) {
      return;  // the dialog is gone
    }
    if (!WaitWhileShown(reached.get())) return;
  }
}

void DialogDriver::ClickAt(HWND window, POINT point) const {
  const LPARAM where = MAKELPARAM(point.x, point.y);
  PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, where);
  PostMessageW(window, WM_LBUTTONUP, 0, where);
  Settle();
}

void DialogDriver::ClickControl(int id) const {
  const HWND control = Find(id);
  RECT client{};
  GetClientRect(control, &client);
  ClickAt(control, {client.right / 2, client.bottom / 2});
}

void DialogDriver::Press(int id) const {
  PostMessageW(Find(id), BM_CLICK, 0, 0);
  Settle();
}

HWND DialogDriver::Focused() const {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  GetGUIThreadInfo(uiThread_, &info);
  return info.hwndFocus;
}

HWND DialogDriver::FocusedOrDialog() const {
  const HWND focused = Focused();
  return focused ? focused : dialog_;
}

void DialogDriver::Type(const std::wstring& text) const {
  // One character at a time: the first one typed into a grid cell opens its editor,
  // which then has the focus for the rest.
  for (const wchar_t character : text) {
    PostMessageW(FocusedOrDialog(), WM_CHAR, character, 1);
    Settle();
  }
}

void DialogDriver::Key(WPARAM virtualKey) const {
  const HWND target = FocusedOrDialog();
  const LPARAM scan = static_cast<LPARAM>(MapVirtualKeyW(static_cast<UINT>(virtualKey), MAPVK_VK_TO_VSC)) << 16;
  PostMessageW(target, WM_KEYDOWN, virtualKey, scan | 1);
  // Key-up flags: the key was down (bit 30) and is being released (bit 31).
  const auto released = static_cast<LPARAM>(static_cast<ULONG_PTR>(3u) << 30);
  PostMessageW(target, WM_KEYUP, virtualKey, scan | 1 | released);
  Settle();
}

void DialogDriver::Alt(wchar_t letter) const {
  constexpr LPARAM kAltDown = 1 << 29;
  PostMessageW(FocusedOrDialog(), WM_SYSCHAR, letter, kAltDown | 1);
  Settle();
}

void DialogDriver::Choose(int comboId, int index) const {
  const HWND combo = Find(comboId);
  PostMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  PostMessageW(GetParent(combo), WM_COMMAND, MAKEWPARAM(comboId, CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
  Settle();
}

void DialogDriver::ClickTab(const std::wstring& caption) const {
  const std::vector<std::wstring> captions = TabCaptions();
  const HWND tabs = Find(win::ids::kTabs);
  for (std::size_t i = 0; i < captions.size(); ++i) {
    if (captions[i] != caption) continue;
    RECT item{};
    SendMessageW(tabs, TCM_GETITEMRECT, i, reinterpret_cast<LPARAM>(&item));
    ClickAt(tabs, {(item.left + item.right) / 2, (item.top + item.bottom) / 2});
    return;
  }
  ADD_FAILURE() << "no tab shows that caption";
}

void DialogDriver::ClickUpDown(int id, bool up) const {
  const HWND upDown = Find(id);
  RECT client{};
  GetClientRect(upDown, &client);
  ClickAt(upDown, {client.right / 2, up ? client.bottom / 4 : client.bottom * 3 / 4});
}

void DialogDriver::ClickCell(int gridId, int row, int col) const {
  const HWND grid = Find(gridId);
  RECT cell{};
  ASSERT_TRUE(CellRectOf(grid, row, col, cell)) << "cell " << row << "," << col << " is not shown";
  ClickAt(grid, {(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2});
}

std::wstring DialogDriver::Text(int id) const { return WindowText(Find(id)); }

std::wstring DialogDriver::Cell(int gridId, int row, int col) const {
  const HWND grid = Find(gridId);
  const LRESULT length = SendMessageW(grid, win::GridWindow::kGetCellText, MAKEWPARAM(row, col), 0);
  if (length < 0) return L"<outside>";
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  win::GridWindow::CellTextRequest request{text.data(), text.size()};
  SendMessageW(grid, win::GridWindow::kGetCellText, MAKEWPARAM(row, col), reinterpret_cast<LPARAM>(&request));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

int DialogDriver::GridRows(int gridId) const {
  return LOWORD(SendMessageW(Find(gridId), win::GridWindow::kGetSize, 0, 0));
}

int DialogDriver::GridCols(int gridId) const {
  return HIWORD(SendMessageW(Find(gridId), win::GridWindow::kGetSize, 0, 0));
}

std::vector<std::wstring> DialogDriver::TabCaptions() const {
  const HWND tabs = Find(win::ids::kTabs);
  std::vector<std::wstring> captions;
  const auto count = static_cast<int>(SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0));
  for (int i = 0; i < count; ++i) {
    wchar_t text[128] = {};
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = 128;
    SendMessageW(tabs, TCM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    captions.emplace_back(text);
  }
  return captions;
}

std::wstring DialogDriver::AnswerMessageBox(int textId) const {
  HWND box = nullptr;
  for (DWORD waited = 0; waited < kWaitMs && !(box = DialogBoxOf(uiThread_)); waited += 20) Sleep(20);
  if (!box) {
    ADD_FAILURE() << "no message box came";
    return {};
  }
  const std::wstring text = WindowText(GetDlgItem(box, textId));
  PostMessageW(box, WM_COMMAND, IDOK, 0);
  for (DWORD waited = 0; waited < kWaitMs && IsWindow(box); waited += 20) Sleep(20);
  return text;
}

void CloseEverything(DWORD uiThread) {
  for (int round = 0; round < 20; ++round) {
    if (const HWND box = DialogBoxOf(uiThread)) {
      PostMessageW(box, WM_COMMAND, IDOK, 0);
    } else if (const HWND dialog = FindWindowW(win::TaskDialogWindow::kClassName, nullptr)) {
      PostMessageW(dialog, WM_CLOSE, 0, 0);
    } else {
      return;
    }
    Sleep(100);
  }
}

}  // namespace nv::uitest
