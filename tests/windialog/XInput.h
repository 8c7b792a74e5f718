#pragma once
// Real input for a dialog on the virtual display, as a person gives it: keys and mouse
// events through the X server's test extension (xdotool), which the display then hands
// to the window system like any keyboard's or mouse's. Only under Wine, whose screen
// coordinates are the display's.
#include "platform/win32/com/WindowsSdk.h"

#include <string>

namespace nv::uitest {

class XInput {
 public:
  // Wine with xdotool: what the real-input tests need; otherwise why not, for a skip.
  static std::string Missing();

  void MoveTo(POINT screen) const;
  void Click(POINT screen) const;
  void DoubleClick(POINT screen) const;
  // Presses the left button at `from`, moves to `to` and lets go there.
  void Drag(POINT from, POINT to) const;
  // Keys as xdotool names them, pressed in turn: "Tab", "ctrl+plus", "alt+c".
  void Keys(const std::string& keys) const;
  // Text as typed on the keyboard (letters, digits and punctuation).
  void Type(const std::string& text) const;

 private:
  // Runs xdotool with `arguments` and waits for it to end; a failure fails the test.
  void Run(const std::string& arguments) const;
};

}  // namespace nv::uitest
