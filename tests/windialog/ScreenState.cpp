#include "tests/windialog/ScreenState.h"

#include <algorithm>

#include "platform/win32/dialog/GridWindow.h"
#include "platform/win32/dialog/TipWindow.h"
#include "platform/win32/dialog/WindowHandles.h"
#include "tests/windialog/DialogDriver.h"
#include "tests/windialog/WindowPictures.h"

namespace nv::uitest {
namespace {

constexpr DWORD kSettleMs = 5000;

}  // namespace

HWND VisibleWindowOf(DWORD process, const std::wstring& className) {
  struct Search {
    DWORD process;
    const std::wstring& className;
    HWND found;
  } search{process, className, nullptr};
  EnumWindows(
      [](HWND window, LPARAM data) CALLBACK -> BOOL {
        auto* s = reinterpret_cast<Search*>(data);
        wchar_t name[64] = {};
        GetClassNameW(window, name, 64);
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner != s->process || s->className != name || !IsWindowVisible(window)) return TRUE;
        s->found = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

bool Eventually(const std::function<bool()>& holds) {
  for (DWORD waited = 0; waited < kSettleMs; waited += 20) {
    if (holds()) return true;
    Sleep(20);
  }
  return holds();
}

ScreenState::ScreenState(HWND dialog) : dialog_(dialog), thread_(GetWindowThreadProcessId(dialog, nullptr)) {}

HWND ScreenState::Control(int id) const { return DialogDriver(dialog_, thread_).Find(id); }

HWND ScreenState::Focused() const {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  GetGUIThreadInfo(thread_, &info);
  return info.hwndFocus;
}

std::wstring ScreenState::Text(HWND window) const {
  wchar_t text[1024] = {};
  SendMessageTimeoutW(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG, kSettleMs, nullptr);
  return text;
}

bool ScreenState::Checked(int id) const { return SendMessageW(Control(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }

RECT ScreenState::ScreenRect(HWND window) const {
  RECT rect{};
  GetWindowRect(window, &rect);
  return rect;
}

POINT ScreenState::Centre(HWND window) const {
  const RECT rect = ScreenRect(window);
  return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

RECT ScreenState::CellOnScreen(int gridId, int row, int col) const {
  const HWND grid = Control(gridId);
  RECT cell{};
  if (!CellRectOf(grid, row, col, cell)) return {};
  MapWindowPoints(grid, nullptr, reinterpret_cast<POINT*>(&cell), 2);
  return cell;
}

POINT ScreenState::CellCentre(int gridId, int row, int col) const {
  const RECT cell = CellOnScreen(gridId, row, col);
  return {(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2};
}

int ScreenState::GridCols(int gridId) const {
  return HIWORD(SendMessageW(Control(gridId), win::GridWindow::kGetSize, 0, 0));
}

POINT ScreenState::GridCurrent(int gridId) const {
  const LRESULT current = SendMessageW(Control(gridId), win::GridWindow::kGetCurrent, 0, 0);
  return {static_cast<short>(HIWORD(current)), static_cast<short>(LOWORD(current))};
}

std::wstring ScreenState::Tip() const {
  DWORD process = 0;
  GetWindowThreadProcessId(dialog_, &process);
  const HWND tip = VisibleWindowOf(process, win::TipWindow::kClassName);
  return tip ? Text(tip) : std::wstring();
}

HWND ScreenState::ShownMessageBox() const {
  HWND box = nullptr;
  Eventually([&] { return (box = DialogBoxOf(thread_)) != nullptr; });
  return box;
}

bool ScreenState::SavePicture(const std::string& path) const {
  RECT area = ScreenRect(dialog_);
  // Room for a tip that shows below or beside the dialog's lower part.
  area.right = std::min<LONG>(area.right + 120, GetSystemMetrics(SM_CXSCREEN));
  area.bottom = std::min<LONG>(area.bottom + 40, GetSystemMetrics(SM_CYSCREEN));
  return SaveScreenPicture(area, path);
}

}  // namespace nv::uitest
