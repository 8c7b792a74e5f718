#include "platform/win32/dialog/TaskDialogWindow.h"

#include <commctrl.h>

#include <algorithm>
#include <string>

#include "common/Error.h"
#include "platform/win32/dialog/TaskDialogIds.h"
#include "platform/win32/dialog/WideText.h"

namespace nv::win {
namespace {

// Posted: the focus a model asked for is given once the event that asked has ended.
constexpr UINT kApplyFocus = WM_APP + 11;
constexpr int kMargin = 8;
constexpr int kButtonWidth = 88;
constexpr int kButtonHeight = 25;

unique_hfont MakeDialogFont(int dpi) {
  LOGFONTW font{};
  font.lfHeight = -MulDiv(8, dpi, 72);
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  font.lfQuality = DEFAULT_QUALITY;
  wcscpy(font.lfFaceName, L"MS Shell Dlg");
  return unique_hfont(CreateFontIndirectW(&font));
}

}  // namespace

TaskDialogWindow::TaskDialogWindow(FrmExtractionChaine& form, Win32UiServices& ui, HMODULE resources)
    : form_(form),
      ui_(ui),
      resources_(resources),
      dpi_(ScreenDpi()),
      dialogClass_(kClassName, &TaskDialogWindow::Procedure, CodeModule(), GetSysColorBrush(COLOR_BTNFACE)),
      gridClass_(GridWindow::RegisterClass(CodeModule())),
      tipClass_(TipWindow::RegisterClass(CodeModule())),
      font_(MakeDialogFont(dpi_)) {
  INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_TAB_CLASSES | ICC_UPDOWN_CLASS | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
}

TaskDialogWindow::~TaskDialogWindow() {
  if (attached_) ui_.Attach(previousDialog_);
}

LRESULT CALLBACK TaskDialogWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    auto* created = reinterpret_cast<CREATESTRUCTW*>(lParam);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created->lpCreateParams));
  }
  auto* self = reinterpret_cast<TaskDialogWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr) return DefWindowProcW(window, message, wParam, lParam);
  return self->OnMessage(window, message, wParam, lParam);
}

LRESULT TaskDialogWindow::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND: {
      const HWND from = reinterpret_cast<HWND>(lParam);
      if (from == nullptr) {
        // Escape, through the dialog manager: the same as Cancel.
        if (LOWORD(wParam) == IDCANCEL) UserEvent([this] { form_.cmdAnnuler.Click(); });
        return 0;
      }
      const auto found = byWindow_.find(from);
      if (found == byWindow_.end() || syncing_) return 0;
      const WORD code = HIWORD(wParam);
      if (code == BN_CLICKED || code == CBN_SELCHANGE) CommitCellEdits();
      // Only what reached the model calls for a sync: a sync in the middle of an edit's
      // own notifications would undo the typing it is about to report.
      bool acted = false;
      if (!Guarded([&] { acted = found->second->Command(code); }) || acted) Sync();
      return 0;
    }
    case WM_NOTIFY: {
      const auto* header = reinterpret_cast<const NMHDR*>(lParam);
      const auto found = byWindow_.find(header->hwndFrom);
      if (found == byWindow_.end() || syncing_) break;
      LRESULT result = 0;
      bool handled = false;
      if (!Guarded([&] { handled = found->second->Notify(*header, result); }) || handled) Sync();
      if (handled) return result;
      break;
    }
    case WM_CTLCOLORSTATIC: {
      const HDC dc = reinterpret_cast<HDC>(wParam);
      if (reinterpret_cast<HWND>(lParam) == flagCheck_) {
        // The flag's check box stands in for its cell: it takes the cell's colours.
        SetBkColor(dc, GetSysColor(COLOR_WINDOW));
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
      }
      SetBkColor(dc, GetSysColor(COLOR_BTNFACE));
      SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
      return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
    }
    case WM_CLOSE:
      if (window == window_.get()) UserEvent([this] { form_.cmdAnnuler.Click(); });
      return 0;
    case kSignalWhenReached:
      SetEvent(reinterpret_cast<HANDLE>(lParam));
      return 0;
    case kApplyFocus:
      if (Control* control = std::exchange(pendingFocus_, nullptr)) {
        const auto found = windowOf_.find(control);
        if (found != windowOf_.end()) SetFocus(found->second);
      }
      return 0;
    default:
      break;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

void TaskDialogWindow::Adopt(std::unique_ptr<Binding> binding) {
  byWindow_[binding->Window()] = binding.get();
  windowOf_.emplace(&binding->Model(), binding->Window());
  bindings_.push_back(std::move(binding));
}

HWND TaskDialogWindow::Make(HWND parent, const wchar_t* windowClass, DWORD style, DWORD exStyle, int id, RECT bounds96) {
  const HWND control = CreateWindowExW(exStyle, windowClass, L"", WS_CHILD | WS_VISIBLE | style, Scale(bounds96.left),
                                       Scale(bounds96.top), Scale(bounds96.right), Scale(bounds96.bottom), parent,
                                       reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), CodeModule(), this);
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
  return control;
}

void TaskDialogWindow::Create(HWND owner) {
  const int width = PixelsFromTwips(form_.Width, dpi_);
  const int height = PixelsFromTwips(form_.Height, dpi_);
  window_.reset(CreateWindowExW(WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT, kClassName, Wide(form_.Caption).c_str(),
                                WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN, PixelsFromTwips(form_.Left, dpi_),
                                PixelsFromTwips(form_.Top, dpi_), width, height, owner, nullptr, CodeModule(), this));
  if (!window_) {
    // No desktop to show it on: the opener hears of it rather than getting a closing.
    throw RuntimeError(static_cast<std::int32_t>(HRESULT_FROM_WIN32(GetLastError())), u"The task dialog's window cannot be created");
  }
  SendMessageW(window_.get(), WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
  tip_.Create(CodeModule(), font_.get());

  RECT client{};
  GetClientRect(window_.get(), &client);
  const int clientWidth = MulDiv(client.right, 96, dpi_);
  const int clientHeight = MulDiv(client.bottom, 96, dpi_);
  const int buttonsTop = clientHeight - kMargin - kButtonHeight;
  tabs_ = Make(window_.get(), WC_TABCONTROLW, WS_TABSTOP | WS_CLIPSIBLINGS, 0, ids::kTabs,
               {kMargin, kMargin, clientWidth - 2 * kMargin, buttonsTop - 2 * kMargin});

  Button* const buttons[] = {&form_.cmdValider, &form_.cmdApp, &form_.cmdAnnuler};
  const int buttonIds[] = {ids::kValider, ids::kAppliquer, ids::kAnnuler};
  for (int i = 0; i < 3; ++i) {
    const int left = clientWidth - kMargin - (3 - i) * kButtonWidth - (2 - i) * 6;
    const DWORD style = WS_TABSTOP | (i == 0 ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON);
    Bind<ButtonBinding>(*buttons[i], Make(window_.get(), L"BUTTON", style, 0, buttonIds[i], {left, buttonsTop, kButtonWidth, kButtonHeight}));
  }
  const HWND help = Make(window_.get(), L"BUTTON", WS_TABSTOP | BS_PUSHBUTTON | BS_ICON, 0, ids::kHelp,
                         {kMargin, buttonsTop, kButtonHeight + 4, kButtonHeight});
  const auto helpIcon = static_cast<HICON>(LoadImageW(nullptr, reinterpret_cast<LPCWSTR>(IDI_QUESTION), IMAGE_ICON,
                                                      Scale(16), Scale(16), LR_SHARED));
  SendMessageW(help, BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(helpIcon));
  Bind<ButtonBinding>(form_.cmdHelp, help, false);
  BuildPages();
}

RECT TaskDialogWindow::PageRect() const {
  RECT display{};
  GetWindowRect(tabs_, &display);
  MapWindowPoints(nullptr, window_.get(), reinterpret_cast<POINT*>(&display), 2);
  SendMessageW(tabs_, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&display));
  return display;
}

SIZE TaskDialogWindow::PageSize() const {
  const RECT area = PageRect();
  return {MulDiv(area.right - area.left, 96, dpi_), MulDiv(area.bottom - area.top, 96, dpi_)};
}

void TaskDialogWindow::BuildPages() {
  // The tab row decides the page area: give it its captions first.
  for (std::int32_t tab = 0; tab < form_.SSTab1.Tabs(); ++tab) {
    std::wstring caption = Wide(form_.SSTab1.TabCaption(tab));
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = caption.data();
    SendMessageW(tabs_, TCM_INSERTITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
  }
  const RECT area = PageRect();
  for (std::int32_t tab = 0; tab < form_.SSTab1.Tabs(); ++tab) {
    const HWND page = CreateWindowExW(WS_EX_CONTROLPARENT, kClassName, L"", WS_CHILD | WS_CLIPSIBLINGS, area.left, area.top,
                                      area.right - area.left, area.bottom - area.top, window_.get(),
                                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(ids::kFirstPage + tab)), CodeModule(), this);
    SetWindowPos(page, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    pages_.push_back(page);
  }
  BuildParameters(pages_[DialogTab::Parameters]);
  BuildSplit(pages_[1]);
  BuildExtraction(pages_[2]);
  BuildRecherche(pages_[3]);
  BuildComment(pages_[DialogTab::Comment]);
  BuildActions(pages_[DialogTab::Actions]);
  Bind<TabBinding>(form_.SSTab1, tabs_, pages_);
}

void TaskDialogWindow::RunModal(const std::function<void(const ShownTaskDialog&)>& shown) {
  HWND owner = GetActiveWindow();
  Create(owner);
  previousDialog_ = ui_.Attach(this);
  attached_ = true;
  Sync();
  if (owner) EnableWindow(owner, FALSE);
  ShowWindow(window_.get(), SW_SHOW);
  SetForegroundWindow(window_.get());
  if (const HWND first = GetNextDlgTabItem(window_.get(), nullptr, FALSE)) SetFocus(first);
  if (shown) shown({form_, window_.get(), [this](const std::function<void()>& action) { UserEvent(action); }});

  MSG message{};
  while (form_.Visible && window_) {
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got == 0) {
      // The host is quitting: leave the dialog and let its own loop see the quit too.
      PostQuitMessage(static_cast<int>(message.wParam));
      break;
    }
    if (got == -1) break;
    if (IsOurs(message.hwnd)) {
      if (PreviewKey(message)) continue;
      if (IsDialogMessageW(window_.get(), &message)) continue;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  tip_.Hide(nullptr);
  // The owner comes back before the dialog goes, so that it gets the activation.
  if (owner) EnableWindow(owner, TRUE);
  ShowWindow(window_.get(), SW_HIDE);
  ui_.Attach(previousDialog_);
  attached_ = false;
  window_.reset();
  if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

bool TaskDialogWindow::IsOurs(HWND window) const {
  return window == window_.get() || IsChild(window_.get(), window);
}

// The dialog sees the keys before its controls: Enter becomes the model's key press.
bool TaskDialogWindow::PreviewKey(MSG& message) {
  if (OptionArrow(message) || UpDownArrow(message) || TabKey(message)) return true;
  if (message.message == WM_KEYDOWN && message.wParam == VK_RETURN) {
    // Keeps the dialog manager from pressing the default button; the character follows.
    TranslateMessage(&message);
    return true;
  }
  if (message.message != WM_CHAR) return false;
  auto key = static_cast<std::int16_t>(message.wParam);
  const std::int16_t pressed = key;
  if (!Guarded([&] { form_.Form_KeyPress(key); }) || key != pressed) Sync();
  if (key == 0) return true;
  message.wParam = static_cast<WPARAM>(static_cast<std::uint16_t>(key));
  return false;
}

bool TaskDialogWindow::Guarded(const std::function<void()>& action) {
  try {
    action();
    return true;
  } catch (...) {
    // The event ends with the failure; the dialog closes and its opener receives it.
    if (!failure_) failure_ = std::current_exception();
    form_.Hide();
    return false;
  }
}

void TaskDialogWindow::UserEvent(const std::function<void()>& action) {
  Guarded(action);
  Sync();
}

void TaskDialogWindow::GridEvent(const GridWindow& grid, const std::function<void()>& action) {
  const int before = messagesShown_;
  UserEvent(action);
  // Whatever key or click left the cell, a message about it sends the person back there.
  if (messagesShown_ != before && !pendingFocus_ && window_ && grid.Handle()) SetFocus(grid.Handle());
}

void TaskDialogWindow::MessageClosed(HWND focused) {
  ++messagesShown_;
  // Where the dialog's rules name no control, the focus stays where it was.
  if (focused && IsWindow(focused) && IsWindowVisible(focused) && IsWindowEnabled(focused) && IsOurs(focused)) SetFocus(focused);
}

void TaskDialogWindow::CommitCellEdits() {
  for (const auto& grid : grids_) grid->CommitEdit();
}

void TaskDialogWindow::Focus(Control& control) {
  pendingFocus_ = &control;
  PostMessageW(window_.get(), kApplyFocus, 0, 0);
}

void TaskDialogWindow::TabToNext() {
  // From inside a grid's cell editor the grid itself is the place in the tab order.
  HWND from = GetFocus();
  while (from && GetParent(from) && GetParent(from) != window_.get() &&
         std::find(pages_.begin(), pages_.end(), GetParent(from)) == pages_.end()) {
    from = GetParent(from);
  }
  if (const HWND next = GetNextDlgTabItem(window_.get(), from, FALSE)) SetFocus(next);
}

void TaskDialogWindow::Sync() {
  if (!window_) return;
  syncing_ = true;
  std::wstring title(512, L'\0');
  title.resize(static_cast<std::size_t>(GetWindowTextW(window_.get(), title.data(), static_cast<int>(title.size()))));
  if (FromWide(title) != form_.Caption) SetWindowTextW(window_.get(), Wide(form_.Caption).c_str());
  for (const auto& binding : bindings_) binding->Sync();
  PlaceFlagCheckBox();
  syncing_ = false;
}

// The extraction editor's check box lies over the current flag cell, where the model puts
// it, and follows it through scrolling and column sizing; only its part over the grid's
// scrolling cells shows.
void TaskDialogWindow::PlaceFlagCheckBox() {
  if (!flagCheck_ || !extractionGrid_ || !form_.FrameExtraction1.mCheckBox.Visible) return;
  const FlexGrid& grid = form_.FrameExtraction1.NovraFlexGrid1;
  RECT cell = extractionGrid_->CellBounds(grid.Row(), grid.Col());
  // It covers the cell, inside the current cell's mark, with its box near the left edge.
  InflateRect(&cell, -Scale(3), -Scale(3));
  if (IsRectEmpty(&cell)) return;
  const RECT area = extractionGrid_->ScrollArea();
  RECT shown{};
  IntersectRect(&shown, &cell, &area);
  const bool whole = EqualRect(&shown, &cell) != FALSE;
  OffsetRect(&shown, -cell.left, -cell.top);
  const bool visible = (GetWindowLongPtrW(flagCheck_, GWL_STYLE) & WS_VISIBLE) != 0;
  if (EqualRect(&cell, &flagCell_) && EqualRect(&shown, &flagShown_) && visible == !IsRectEmpty(&shown)) return;
  flagCell_ = cell;
  flagShown_ = shown;
  // The window owns the region from here on.
  SetWindowRgn(flagCheck_, whole ? nullptr : CreateRectRgnIndirect(&shown), FALSE);
  SetWindowPos(flagCheck_, HWND_TOP, cell.left, cell.top, cell.right - cell.left, cell.bottom - cell.top,
               SWP_NOACTIVATE | SWP_NOCOPYBITS | (IsRectEmpty(&shown) ? SWP_HIDEWINDOW : SWP_SHOWWINDOW));
  // The grid paints again what the box left behind.
  RedrawWindow(extractionGrid_->Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

}  // namespace nv::win
