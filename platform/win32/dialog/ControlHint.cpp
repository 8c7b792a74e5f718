#include "platform/win32/dialog/ControlHint.h"

#include <commctrl.h>

namespace nv::win {

ControlHint::ControlHint(HWND control, TipWindow& tip, std::wstring words)
    : control_(control), tip_(tip), words_(std::move(words)) {
  SetWindowSubclass(control_, &ControlHint::Procedure, 2, reinterpret_cast<DWORD_PTR>(this));
}

void ControlHint::ShowWords() {
  if (words_.empty()) return;
  RECT bounds{};
  GetWindowRect(control_, &bounds);
  tip_.Show(words_, {bounds.left, bounds.bottom + 2}, control_);
}

LRESULT CALLBACK ControlHint::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data) {
  auto* self = reinterpret_cast<ControlHint*>(data);
  switch (message) {
    case WM_PAINT: {
      const LRESULT painted = DefSubclassProc(window, message, wParam, lParam);
      if (GetFocus() == window) {
        // Drawn over what the control painted, inside its edge.
        const WindowDc dc(window);
        // Within the window's region, where it has one: a control partly scrolled out.
        const com::unique_handle<HRGN, com::GdiObjectDeleter> region(CreateRectRgn(0, 0, 0, 0));
        if (GetWindowRgn(window, region.get()) != ERROR) SelectClipRgn(dc.get(), region.get());
        RECT client{};
        GetClientRect(window, &client);
        InflateRect(&client, -1, -1);
        DrawFocusRect(dc.get(), &client);
      }
      return painted;
    }
    case WM_SETFOCUS:
      InvalidateRect(window, nullptr, TRUE);
      self->ShowWords();
      break;
    case WM_KILLFOCUS:
      InvalidateRect(window, nullptr, TRUE);
      self->tip_.Hide(window);
      break;
    case WM_MOUSEMOVE:
      if (!self->tracking_) {
        TRACKMOUSEEVENT track{sizeof(track), TME_LEAVE, window, 0};
        self->tracking_ = TrackMouseEvent(&track) != FALSE;
        self->ShowWords();
      }
      break;
    case WM_MOUSELEAVE:
      self->tracking_ = false;
      if (GetFocus() != window) self->tip_.Hide(window);
      break;
    case WM_NCDESTROY:
      self->tip_.Hide(window);
      RemoveWindowSubclass(window, &ControlHint::Procedure, 2);
      break;
    default:
      break;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace nv::win
