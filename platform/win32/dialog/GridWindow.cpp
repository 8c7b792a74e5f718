#include "platform/win32/dialog/GridWindow.h"

#include <commctrl.h>

#include <algorithm>
#include <string>

#include "platform/win32/dialog/WideText.h"

namespace nv::win {
namespace {

// Posted by the in-cell editor when it loses the focus: the edit ends once the focus has
// settled, never inside the focus change itself (the model may show a message box).
constexpr UINT kCommitMessage = WM_APP + 1;
// Posted by the in-cell editor for Up and Down (wParam the key): the edit ends, then the
// cell above or below becomes current.
constexpr UINT kCommitAndMove = WM_APP + 6;

int Px(int dpi, int pixelsAt96) { return MulDiv(pixelsAt96, dpi, 96); }

POINT PointOf(LPARAM lParam) { return {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))}; }

bool ControlHeld() { return GetKeyState(VK_CONTROL) < 0; }

}  // namespace

GridWindow::GridWindow(GridSource& source, ActionRunner run) : source_(source), run_(std::move(run)) {}

WindowClass GridWindow::RegisterClass(HINSTANCE instance) {
  return WindowClass(kClassName, &GridWindow::Procedure, instance, nullptr, CS_DBLCLKS);
}

HWND GridWindow::Create(HWND parent, int id, const RECT& bounds, HFONT font) {
  font_ = font;
  const HINSTANCE instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(parent, GWLP_HINSTANCE));
  window_ = CreateWindowExW(WS_EX_CLIENTEDGE, kClassName, L"",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL,
                            bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top, parent,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, this);
  {
    const WindowDc dc(window_);
    dpi_ = GetDeviceCaps(dc.get(), LOGPIXELSY);
    const SelectedObject selected(dc.get(), font_);
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc.get(), &metrics);
    rowHeight_ = metrics.tmHeight + Px(dpi_, 6);
  }
  if (source_.HasPlusMinus()) {
    const DWORD style = WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON;
    plus_ = CreateWindowExW(0, L"BUTTON", L"+", style, 0, 0, 0, 0, window_, reinterpret_cast<HMENU>(kPlusId), instance, nullptr);
    minus_ = CreateWindowExW(0, L"BUTTON", L"\x2212", style, 0, 0, 0, 0, window_, reinterpret_cast<HMENU>(kMinusId), instance,
                             nullptr);
    SendMessageW(plus_, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    SendMessageW(minus_, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    LayoutButtons();
  }
  Refresh();
  return window_;
}

LRESULT CALLBACK GridWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    auto* self = static_cast<GridWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
    self->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  }
  auto* self = reinterpret_cast<GridWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr) return DefWindowProcW(window, message, wParam, lParam);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    self->window_ = nullptr;
    return DefWindowProcW(window, message, wParam, lParam);
  }
  return self->OnMessage(message, wParam, lParam);
}

LRESULT GridWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_GETDLGCODE: return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_SETFONT: font_ = reinterpret_cast<HFONT>(wParam); return 0;
    case WM_GETFONT: return reinterpret_cast<LRESULT>(font_);
    case WM_ERASEBKGND: return 1;  // painted whole, through a buffer
    case WM_PAINT: return OnPaint();
    case WM_SIZE: return OnSize();
    case WM_SETFOCUS: return OnFocusChange(true);
    case WM_KILLFOCUS: return OnFocusChange(false);
    case WM_SETCURSOR: return OnSetCursor(wParam, lParam);
    case WM_LBUTTONDOWN: return OnButtonDown(PointOf(lParam));
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED: return OnButtonUp();
    case WM_LBUTTONDBLCLK: return OnDoubleClick(PointOf(lParam));
    case WM_MOUSEMOVE: return OnMouseMove(PointOf(lParam));
    case WM_MOUSELEAVE: return OnMouseLeave();
    case WM_KEYDOWN:
      if (OnKeyDown(wParam)) return 0;
      break;
    case WM_CHAR: return OnChar(wParam);
    case kCommitMessage: CommitEdit(); return 0;
    case kCommitAndMove: return OnCommitAndMove(wParam);
    case kGetCellText: return OnGetCellText(wParam, lParam);
    case kGetCellTopLeft:
    case kGetCellBottomRight: return OnGetCellCorner(message, wParam);
    case kGetSize: return MAKELRESULT(source_.Rows(), source_.Cols());
    case kGetCurrent: return MAKELRESULT(source_.Row(), source_.Col());
    case WM_VSCROLL: Scroll(SB_VERT, wParam); return 0;
    case WM_HSCROLL: Scroll(SB_HORZ, wParam); return 0;
    case WM_MOUSEWHEEL: Scroll(SB_VERT, GET_WHEEL_DELTA_WPARAM(wParam) > 0 ? SB_LINEUP : SB_LINEDOWN); return 0;
    case WM_COMMAND: return OnCommand(wParam, lParam);
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
      // A control laid over a cell takes its colours from the dialog, like its siblings.
      return SendMessageW(GetParent(window_), message, wParam, lParam);
    default: break;
  }
  return DefWindowProcW(window_, message, wParam, lParam);
}

LRESULT GridWindow::OnPaint() {
  const PaintScope paint(window_);
  RECT client{};
  GetClientRect(window_, &client);
  const unique_memory_dc buffer(CreateCompatibleDC(paint.get()));
  const unique_hbitmap bitmap(CreateCompatibleBitmap(paint.get(), std::max<LONG>(client.right, 1), std::max<LONG>(client.bottom, 1)));
  const SelectedObject selected(buffer.get(), bitmap.get());
  Paint(buffer.get(), client);
  BitBlt(paint.get(), 0, 0, client.right, client.bottom, buffer.get(), 0, 0, SRCCOPY);
  return 0;
}

LRESULT GridWindow::OnSize() {
  LayoutButtons();
  UpdateScrollBars();
  InvalidateRect(window_, nullptr, FALSE);
  ViewChanged();
  return 0;
}

LRESULT GridWindow::OnFocusChange(bool gained) {
  InvalidateRect(window_, nullptr, FALSE);
  // Focused, the grid shows where typing goes at once: a current cell among its data.
  if (gained && !clicking_ && !CurrentIsDataCell()) Move(0, 0);
  ShowTip();
  return 0;
}

LRESULT GridWindow::OnSetCursor(WPARAM wParam, LPARAM lParam) {
  if (LOWORD(lParam) == HTCLIENT && reinterpret_cast<HWND>(wParam) == window_) {
    POINT point{};
    GetCursorPos(&point);
    ScreenToClient(window_, &point);
    if (sizingCol_ >= 0 || BorderAt(point) >= 0) {
      SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
      return TRUE;
    }
  }
  return DefWindowProcW(window_, WM_SETCURSOR, wParam, lParam);
}

LRESULT GridWindow::OnButtonDown(POINT point) {
  CommitEdit();
  clicking_ = true;
  SetFocus(window_);
  clicking_ = false;
  if (const std::int32_t border = BorderAt(point); border >= 0) {
    sizingCol_ = border;
    sizingAnchor_ = point.x - ColumnWidths()[static_cast<std::size_t>(border)];
    SetCapture(window_);
    return 0;
  }
  std::int32_t row = 0;
  std::int32_t col = 0;
  if (HitTest(point, row, col)) run_(*this, [&] { source_.Enter(row, col); });
  else if (!CurrentIsDataCell()) Move(0, 0);
  return 0;
}

LRESULT GridWindow::OnButtonUp() {
  if (sizingCol_ < 0) return 0;
  sizingCol_ = -1;
  if (GetCapture() == window_) ReleaseCapture();
  return 0;
}

LRESULT GridWindow::OnDoubleClick(POINT point) {
  if (const std::int32_t border = BorderAt(point); border >= 0) {
    FitColumn(border);
  } else if (source_.CurrentTakesTyping()) {
    BeginEdit(nullptr);
  }
  return 0;
}

LRESULT GridWindow::OnMouseMove(POINT point) {
  if (sizingCol_ >= 0) {
    SetColumnWidth(sizingCol_, point.x - sizingAnchor_);
    return 0;
  }
  if (!tracking_) {
    TRACKMOUSEEVENT track{sizeof(track), TME_LEAVE, window_, 0};
    tracking_ = TrackMouseEvent(&track) != FALSE;
  }
  std::int32_t row = -1;
  std::int32_t col = -1;
  if (!HitTest(point, row, col, true)) row = col = -1;
  if (row != hoverRow_ || col != hoverCol_) {
    hoverRow_ = row;
    hoverCol_ = col;
    ShowTip();
  }
  return 0;
}

LRESULT GridWindow::OnMouseLeave() {
  tracking_ = false;
  hoverRow_ = hoverCol_ = -1;
  ShowTip();
  return 0;
}

bool GridWindow::OnKeyDown(WPARAM key) {
  if (ControlHeld() && plus_) {
    // The keyboard's way to the plus and minus buttons; never the Insert key.
    if (key == VK_ADD || key == VK_OEM_PLUS) PressPlusMinus(true);
    if (key == VK_SUBTRACT || key == VK_OEM_MINUS) PressPlusMinus(false);
    if (key == VK_ADD || key == VK_OEM_PLUS || key == VK_SUBTRACT || key == VK_OEM_MINUS) return true;
  }
  switch (key) {
    case VK_LEFT: Move(0, -1); return true;
    case VK_RIGHT: Move(0, 1); return true;
    case VK_UP: Move(-1, 0); return true;
    case VK_DOWN: Move(1, 0); return true;
    case VK_F2:
      if (source_.CurrentTakesTyping()) BeginEdit(nullptr);
      return true;
    default: return false;
  }
}

LRESULT GridWindow::OnChar(WPARAM character) {
  if (character >= 32 && !ControlHeld() && source_.CurrentTakesTyping()) {
    const wchar_t first[2] = {static_cast<wchar_t>(character), 0};
    BeginEdit(first);
  }
  return 0;
}

LRESULT GridWindow::OnCommitAndMove(WPARAM key) {
  CommitEdit();
  Move(key == VK_UP ? -1 : 1, 0);
  return 0;
}

LRESULT GridWindow::OnGetCellText(WPARAM cell, LPARAM request) const {
  const std::int32_t row = LOWORD(cell);
  const std::int32_t col = HIWORD(cell);
  if (row >= source_.Rows() || col >= source_.Cols()) return -1;
  const Text& text = source_.Cell(row, col);
  const auto* into = reinterpret_cast<const CellTextRequest*>(request);
  if (into && into->buffer && into->capacity > 0) {
    const std::size_t length = std::min(text.size(), into->capacity - 1);
    std::copy_n(text.begin(), length, into->buffer);
    into->buffer[length] = L'\0';
  }
  return static_cast<LRESULT>(text.size());
}

LRESULT GridWindow::OnGetCellCorner(UINT message, WPARAM cell) const {
  const RECT rect = CellRect(LOWORD(cell), HIWORD(cell));
  if (IsRectEmpty(&rect)) return -1;
  return message == kGetCellTopLeft ? MAKELRESULT(rect.left, rect.top) : MAKELRESULT(rect.right, rect.bottom);
}

LRESULT GridWindow::OnCommand(WPARAM wParam, LPARAM lParam) {
  const HWND from = reinterpret_cast<HWND>(lParam);
  if (from && (from == plus_ || from == minus_)) {
    if (HIWORD(wParam) == BN_CLICKED) PressPlusMinus(from == plus_);
    return 0;
  }
  // A control laid over a cell reports to the dialog, as its siblings do.
  return SendMessageW(GetParent(window_), WM_COMMAND, wParam, lParam);
}

void GridWindow::PressPlusMinus(bool plus) {
  CommitEdit();
  run_(*this, [&] { plus ? source_.Plus() : source_.Minus(); });
}

LRESULT CALLBACK GridWindow::EditorProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                             DWORD_PTR data) {
  auto* self = reinterpret_cast<GridWindow*>(data);
  switch (message) {
    case WM_GETDLGCODE: {
      // Escape ends the edit here instead of closing the dialog.
      const auto* pending = reinterpret_cast<const MSG*>(lParam);
      if (pending && pending->message == WM_KEYDOWN && pending->wParam == VK_ESCAPE) return DLGC_WANTMESSAGE;
      break;
    }
    case WM_KEYDOWN:
      if (wParam == VK_ESCAPE) {
        self->CancelEdit();
        return 0;
      }
      if (wParam == VK_UP || wParam == VK_DOWN) {
        // Typing down a column: the edit ends and the next cell is current.
        PostMessageW(self->window_, kCommitAndMove, wParam, 0);
        return 0;
      }
      break;
    case WM_CHAR:
      // Enter that reached the editor without the dialog's key handling: the edit ends.
      if (wParam == VK_RETURN || wParam == VK_ESCAPE) {
        if (wParam == VK_RETURN) SetFocus(self->window_);
        return 0;
      }
      break;
    case WM_KILLFOCUS:
      PostMessageW(self->window_, kCommitMessage, 0, 0);
      break;
    default:
      break;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

void GridWindow::BeginEdit(const wchar_t* first) {
  if (editor_) return;
  EnsureCurrentVisible();
  editRow_ = source_.Row();
  editCol_ = source_.Col();
  RECT cell = CellRect(editRow_, editCol_);
  if (IsRectEmpty(&cell)) return;
  if (tip_) tip_->Hide(window_);
  const std::wstring text = first ? std::wstring(first) : Wide(source_.Cell(editRow_, editCol_));
  const HINSTANCE instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(window_, GWLP_HINSTANCE));
  editor_ = CreateWindowExW(0, L"EDIT", text.c_str(), WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, cell.left, cell.top,
                            cell.right - cell.left, cell.bottom - cell.top, window_, nullptr, instance, nullptr);
  SendMessageW(editor_, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
  SetWindowSubclass(editor_, &GridWindow::EditorProcedure, 1, reinterpret_cast<DWORD_PTR>(this));
  SetFocus(editor_);
  const auto length = static_cast<WPARAM>(text.size());
  SendMessageW(editor_, EM_SETSEL, first ? length : 0, static_cast<LPARAM>(length));
}

void GridWindow::CommitEdit() {
  if (!editor_) return;
  const HWND editor = std::exchange(editor_, nullptr);
  std::wstring typed(static_cast<std::size_t>(GetWindowTextLengthW(editor)) + 1, L'\0');
  typed.resize(static_cast<std::size_t>(GetWindowTextW(editor, typed.data(), static_cast<int>(typed.size()))));
  if (GetFocus() == editor) SetFocus(window_);
  DestroyWindow(editor);
  const std::int32_t row = editRow_;
  const std::int32_t col = editCol_;
  run_(*this, [&] {
    // The edit belongs to the cell it started on, even when the model moved on since.
    if (source_.Row() != row || source_.Col() != col) source_.Enter(row, col);
    source_.Edit(FromWide(typed));
  });
}

void GridWindow::CancelEdit() {
  if (!editor_) return;
  const HWND editor = std::exchange(editor_, nullptr);
  SetFocus(window_);
  DestroyWindow(editor);
}

void GridWindow::LayoutButtons() {
  if (!plus_) return;
  RECT client{};
  GetClientRect(window_, &client);
  const int height = Px(dpi_, kButtonStrip) - Px(dpi_, 4);
  const int width = Px(dpi_, 28);
  const int top = client.bottom - height - Px(dpi_, 2);
  MoveWindow(plus_, Px(dpi_, 2), top, width, height, TRUE);
  MoveWindow(minus_, Px(dpi_, 4) + width, top, width, height, TRUE);
}

void GridWindow::Scroll(int bar, WPARAM request) {
  std::int32_t& position = bar == SB_VERT ? topRow_ : leftCol_;
  SCROLLINFO info{sizeof(SCROLLINFO), SIF_ALL, 0, 0, 0, 0, 0};
  GetScrollInfo(window_, bar, &info);
  switch (LOWORD(request)) {
    case SB_LINEUP: --position; break;
    case SB_LINEDOWN: ++position; break;
    case SB_PAGEUP: position -= static_cast<std::int32_t>(info.nPage); break;
    case SB_PAGEDOWN: position += static_cast<std::int32_t>(info.nPage); break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: position = info.nTrackPos; break;
    case SB_TOP: position = 0; break;
    case SB_BOTTOM: position = info.nMax; break;
    default: return;
  }
  CommitEdit();
  UpdateScrollBars();
  InvalidateRect(window_, nullptr, FALSE);
  ViewChanged();
}

bool GridWindow::CurrentIsDataCell() const {
  return source_.Row() >= source_.FixedRows() && source_.Col() >= source_.FixedCols() && source_.Row() < source_.Rows() &&
         source_.Col() < source_.Cols();
}

void GridWindow::Move(int rows, int cols) {
  if (source_.Rows() <= source_.FixedRows() || source_.Cols() <= source_.FixedCols()) return;
  const std::int32_t row = std::clamp(source_.Row() + rows, source_.FixedRows(), source_.Rows() - 1);
  const std::int32_t col = std::clamp(source_.Col() + cols, source_.FixedCols(), source_.Cols() - 1);
  run_(*this, [&] { source_.Enter(row, col); });
}

void GridWindow::ViewChanged() {
  ShowTip();
  if (viewChanged_) viewChanged_();
}

void GridWindow::ShowTip() {
  if (!tip_ || !window_) return;
  std::int32_t row = hoverRow_;
  std::int32_t col = hoverCol_;
  const bool hovering = row >= 0 && !Fits(row, col);
  if (!hovering) {
    row = source_.Row();
    col = source_.Col();
  }
  const bool keyboard = !hovering && GetFocus() == window_ && CurrentIsDataCell() && !Fits(row, col);
  RECT cell = CellRect(row, col);
  if ((!hovering && !keyboard) || editor_ || IsRectEmpty(&cell)) {
    tip_->Hide(window_);
    return;
  }
  MapWindowPoints(window_, nullptr, reinterpret_cast<POINT*>(&cell), 2);
  tip_->Show(Wide(source_.Cell(row, col)), {cell.left, cell.bottom + 1}, window_);
}

std::u16string GridWindow::Signature() const {
  std::u16string signature;
  const auto number = [&](std::int64_t value) { signature += DecimalText(value) + u'\x1F'; };
  number(source_.Rows());
  number(source_.Cols());
  number(source_.FixedRows());
  number(source_.FixedCols());
  number(source_.Row());
  number(source_.Col());
  for (std::int32_t col = 0; col < source_.Cols(); ++col) number(source_.ColWidthTwips(col));
  for (std::int32_t row = 0; row < source_.Rows(); ++row) {
    for (std::int32_t col = 0; col < source_.Cols(); ++col) {
      signature += source_.Cell(row, col);
      signature += u'\x1E';
      number(static_cast<std::int64_t>(source_.Alignment(row, col)));
      number(source_.BackColour(row, col));
    }
  }
  return signature;
}

void GridWindow::Refresh() {
  if (!window_) return;
  std::u16string now = Signature();
  if (now == shown_) return;
  shown_ = std::move(now);
  // Only a move of the current cell scrolls: the user's own scrolling stays otherwise.
  if (source_.Row() != shownRow_ || source_.Col() != shownCol_) EnsureCurrentVisible();
  shownRow_ = source_.Row();
  shownCol_ = source_.Col();
  // A column the model took away takes the person's width with it.
  widths_.erase(widths_.lower_bound(source_.Cols()), widths_.end());
  UpdateScrollBars();
  InvalidateRect(window_, nullptr, FALSE);
  ShowTip();
}

}  // namespace nv::win
