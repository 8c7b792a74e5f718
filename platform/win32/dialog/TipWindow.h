#pragma once
// A small box that shows a whole text over the dialog: a cell's text that its column
// cuts, or the words for what a control does. The box's window text is what it shows,
// so that any tool can read it, from any process.
#include <windows.h>

#include <string>

#include "platform/win32/dialog/WindowHandles.h"

namespace nv::win {

class TipWindow {
 public:
  static constexpr wchar_t kClassName[] = L"NvTip";
  static WindowClass RegisterClass(HINSTANCE instance);

  // A box of its own, above every window: it goes with this object, not with the dialog,
  // so that the dialog's controls may still hide it while they go.
  void Create(HINSTANCE instance, HFONT font);
  // Shows `text` with its top-left corner at `where` (screen), kept on the screen, for
  // `from`, the window whose content it tells.
  void Show(const std::wstring& text, POINT where, HWND from);
  // Hides the box when it is showing something of `from` (null: whatever it shows).
  void Hide(HWND from);
  HWND Handle() const noexcept { return window_.get(); }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HFONT font_ = nullptr;
  HWND from_ = nullptr;
  unique_hwnd window_;
};

}  // namespace nv::win
