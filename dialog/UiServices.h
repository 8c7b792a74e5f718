#pragma once
// What the editors ask of the windowing system: messages, focus, the screen, a Tab stroke.
#include <cstdint>

#include "common/Text.h"
#include "dialog/Control.h"

namespace nv {

// Exclamation icon with one OK button.
constexpr std::int32_t kMessageExclamation = 48;

struct ScreenSize {
  std::int32_t Width = 0;  // twips
  std::int32_t Height = 0;
};

class UiServices {
 public:
  virtual ~UiServices() = default;
  // A modal message box; it has no title of its own.
  virtual void MsgBox(const Text& prompt, std::int32_t style) = 0;
  virtual void SetFocus(Control& control) = 0;
  virtual ScreenSize GetScreenSize() = 0;
  virtual void SendTabKey() = 0;
};

}  // namespace nv
