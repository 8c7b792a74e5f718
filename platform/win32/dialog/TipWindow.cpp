#include "platform/win32/dialog/TipWindow.h"

#include <algorithm>

namespace nv::win {
namespace {

constexpr int kPadding = 4;
constexpr int kWidestText = 480;  // longer texts wrap (96-DPI pixels)

UINT TextFormat() { return DT_NOPREFIX | DT_EXPANDTABS | DT_WORDBREAK; }

int DpiOf(HWND window) {
  const WindowDc dc(window);
  return GetDeviceCaps(dc.get(), LOGPIXELSY);
}

}  // namespace

WindowClass TipWindow::RegisterClass(HINSTANCE instance) {
  return WindowClass(kClassName, &TipWindow::Procedure, instance, GetSysColorBrush(COLOR_INFOBK), CS_SAVEBITS);
}

void TipWindow::Create(HINSTANCE instance, HFONT font) {
  font_ = font;
  window_.reset(CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE, kClassName, L"", WS_POPUP | WS_BORDER, 0, 0,
                                0, 0, nullptr, nullptr, instance, nullptr));
  if (window_) SendMessageW(window_.get(), WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

LRESULT CALLBACK TipWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SETFONT:
      SetWindowLongPtrW(window, GWLP_USERDATA, static_cast<LONG_PTR>(wParam));
      return 0;
    case WM_GETFONT:
      return GetWindowLongPtrW(window, GWLP_USERDATA);
    case WM_NCHITTEST:
      return HTTRANSPARENT;  // the mouse belongs to what lies below
    case WM_PAINT: {
      const PaintScope paint(window);
      RECT client{};
      GetClientRect(window, &client);
      FillRect(paint.get(), &client, GetSysColorBrush(COLOR_INFOBK));
      const SelectedObject font(paint.get(), reinterpret_cast<HFONT>(GetWindowLongPtrW(window, GWLP_USERDATA)));
      SetBkMode(paint.get(), TRANSPARENT);
      SetTextColor(paint.get(), GetSysColor(COLOR_INFOTEXT));
      std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
      text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
      const int padding = MulDiv(kPadding, DpiOf(window), 96);
      InflateRect(&client, -padding, -padding / 2);
      DrawTextW(paint.get(), text.c_str(), static_cast<int>(text.size()), &client, TextFormat());
      return 0;
    }
    default:
      return DefWindowProcW(window, message, wParam, lParam);
  }
}

void TipWindow::Show(const std::wstring& text, POINT where, HWND from) {
  if (!window_) return;
  from_ = from;
  const int dpi = DpiOf(window_.get());
  const int padding = MulDiv(kPadding, dpi, 96);
  RECT measured{0, 0, MulDiv(kWidestText, dpi, 96), 0};
  {
    const WindowDc dc(window_.get());
    const SelectedObject font(dc.get(), font_);
    DrawTextW(dc.get(), text.c_str(), static_cast<int>(text.size()), &measured, TextFormat() | DT_CALCRECT);
  }
  const int border = 2 * GetSystemMetrics(SM_CXBORDER);
  const int width = measured.right + 2 * padding + border;
  const int height = measured.bottom + padding + border;
  const int screenWidth = GetSystemMetrics(SM_CXSCREEN);
  const int screenHeight = GetSystemMetrics(SM_CYSCREEN);
  const int left = std::clamp<int>(where.x, 0, std::max(0, screenWidth - width));
  const int top = std::clamp<int>(where.y, 0, std::max(0, screenHeight - height));
  SetWindowTextW(window_.get(), text.c_str());
  SetWindowPos(window_.get(), HWND_TOPMOST, left, top, width, height, SWP_NOACTIVATE | SWP_SHOWWINDOW);
  InvalidateRect(window_.get(), nullptr, TRUE);
}

void TipWindow::Hide(HWND from) {
  if (!window_ || (from && from != from_)) return;
  from_ = nullptr;
  ShowWindow(window_.get(), SW_HIDE);
}

}  // namespace nv::win
