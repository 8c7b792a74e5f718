#pragma once
// The editors' UI services on Windows: message boxes owned by the dialog shown, the focus
// given to a model control's window, the screen in twips, and a Tab stroke.
#include <windows.h>

#include "dialog/UiServices.h"

namespace nv::win {

// What the dialog on screen offers the services while it is shown.
class ShownDialog {
 public:
  virtual ~ShownDialog() = default;
  virtual HWND Window() const = 0;
  virtual void Focus(Control& control) = 0;
  // Moves the focus on as the Tab key does.
  virtual void TabToNext() = 0;
  // A message box over the dialog closed; `focused` had the focus when it opened.
  virtual void MessageClosed(HWND focused) = 0;
};

class Win32UiServices final : public UiServices {
 public:
  void MsgBox(const Text& prompt, std::int32_t style) override;
  void SetFocus(Control& control) override;
  ScreenSize GetScreenSize() override;
  void SendTabKey() override;

  // Set while a dialog is shown; the previous one comes back when it goes.
  ShownDialog* Attach(ShownDialog* dialog) noexcept;

 private:
  ShownDialog* shown_ = nullptr;
};

// Twips from pixels and back, at the screen's resolution.
int TwipsFromPixels(int pixels, int dpi);
int PixelsFromTwips(int twips, int dpi);
int ScreenDpi();

}  // namespace nv::win
