#include "platform/win32/dialog/Win32UiServices.h"

#include <utility>
#include <vector>

#include "platform/win32/dialog/WideText.h"
#include "platform/win32/dialog/WindowHandles.h"

namespace nv::win {

int TwipsFromPixels(int pixels, int dpi) { return MulDiv(pixels, 1440, dpi); }
int PixelsFromTwips(int twips, int dpi) { return MulDiv(twips, dpi, 1440); }

int ScreenDpi() {
  const WindowDc screen(nullptr);
  return GetDeviceCaps(screen.get(), LOGPIXELSX);
}

void Win32UiServices::MsgBox(const Text& prompt, std::int32_t style) {
  const HWND owner = shown_ ? shown_->Window() : nullptr;
  // No title of its own: the box takes the dialog's.
  std::wstring title(256, L'\0');
  title.resize(owner ? static_cast<std::size_t>(GetWindowTextW(owner, title.data(), static_cast<int>(title.size()))) : 0);
  const HWND focused = GetFocus();
  MessageBoxW(owner, Wide(prompt).c_str(), title.c_str(), static_cast<UINT>(style));
  if (shown_) shown_->MessageClosed(focused);
}

void Win32UiServices::SetFocus(Control& control) {
  if (shown_) shown_->Focus(control);
}

ScreenSize Win32UiServices::GetScreenSize() {
  const int dpi = ScreenDpi();
  return {TwipsFromPixels(GetSystemMetrics(SM_CXSCREEN), dpi), TwipsFromPixels(GetSystemMetrics(SM_CYSCREEN), dpi)};
}

void Win32UiServices::SendTabKey() {
  if (shown_) shown_->TabToNext();
}

ShownDialog* Win32UiServices::Attach(ShownDialog* dialog) noexcept { return std::exchange(shown_, dialog); }

}  // namespace nv::win
