// The keys the dialog handles itself, before its controls: arrows among option buttons
// and the keys that turn the tabs.
#include "platform/win32/dialog/TaskDialogWindow.h"

#include <commctrl.h>

#include <vector>

namespace nv::win {
namespace {

bool IsOptionButton(HWND window) {
  wchar_t name[16] = {};
  GetClassNameW(window, name, 16);
  const LONG_PTR type = GetWindowLongPtrW(window, GWL_STYLE) & BS_TYPEMASK;
  return _wcsicmp(name, L"Button") == 0 && (type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON);
}

// The option buttons next to `from` in the order of siblings, `from` among them.
std::vector<HWND> OptionRun(HWND from) {
  HWND first = from;
  for (HWND before = GetWindow(from, GW_HWNDPREV); before && IsOptionButton(before); before = GetWindow(before, GW_HWNDPREV)) {
    first = before;
  }
  std::vector<HWND> run;
  for (HWND next = first; next && IsOptionButton(next); next = GetWindow(next, GW_HWNDNEXT)) run.push_back(next);
  return run;
}

}  // namespace

bool TaskDialogWindow::OptionArrow(const MSG& message) {
  if (message.message != WM_KEYDOWN || !IsOptionButton(message.hwnd)) return false;
  const WPARAM key = message.wParam;
  if (key != VK_LEFT && key != VK_RIGHT && key != VK_UP && key != VK_DOWN) return false;
  const std::vector<HWND> run = OptionRun(message.hwnd);
  const bool back = key == VK_LEFT || key == VK_UP;
  std::size_t at = 0;
  while (at < run.size() && run[at] != message.hwnd) ++at;
  // Round the group, past the options that cannot be chosen; the one reached is chosen.
  for (std::size_t step = 1; step < run.size(); ++step) {
    const HWND next = run[(at + (back ? run.size() - step : step)) % run.size()];
    if (!IsWindowVisible(next) || !IsWindowEnabled(next)) continue;
    SendMessageW(next, BM_CLICK, 0, 0);
    break;
  }
  return true;
}

bool TaskDialogWindow::UpDownArrow(const MSG& message) {
  if (message.message != WM_KEYDOWN || (message.wParam != VK_UP && message.wParam != VK_DOWN)) return false;
  wchar_t name[32] = {};
  GetClassNameW(message.hwnd, name, 32);
  if (_wcsicmp(name, UPDOWN_CLASSW) != 0 || !IsOurs(message.hwnd)) return false;
  // The key is an arrow's click: the same notification, by the same way.
  NMUPDOWN change{};
  change.hdr = {message.hwnd, static_cast<UINT_PTR>(GetDlgCtrlID(message.hwnd)), UDN_DELTAPOS};
  change.iDelta = message.wParam == VK_UP ? 1 : -1;
  SendMessageW(GetParent(message.hwnd), WM_NOTIFY, change.hdr.idFrom, reinterpret_cast<LPARAM>(&change));
  return true;
}

bool TaskDialogWindow::TabKey(const MSG& message) {
  if (message.message != WM_KEYDOWN || GetKeyState(VK_CONTROL) >= 0) return false;
  const WPARAM key = message.wParam;
  if (key != VK_TAB && key != VK_NEXT && key != VK_PRIOR) return false;
  const bool back = key == VK_PRIOR || (key == VK_TAB && GetKeyState(VK_SHIFT) < 0);
  const TabControl& tabs = form_.SSTab1;
  const std::int32_t count = tabs.Tabs();
  for (std::int32_t step = 1; step < count; ++step) {
    const std::int32_t tab = (tabs.Tab() + (back ? count - step : step)) % count;
    if (!tabs.TabEnabled(tab)) continue;
    CommitCellEdits();
    UserEvent([&] { form_.SSTab1.ClickTab(tab); });
    // The focus goes with the page: to its first control that takes it.
    if (tab < static_cast<std::int32_t>(pages_.size())) {
      if (const HWND first = GetNextDlgTabItem(pages_[static_cast<std::size_t>(tab)], nullptr, FALSE)) SetFocus(first);
    }
    break;
  }
  return true;
}

void TaskDialogWindow::Hint(HWND control, const wchar_t* words) {
  hints_.push_back(std::make_unique<ControlHint>(control, tip_, words ? words : L""));
}

}  // namespace nv::win
