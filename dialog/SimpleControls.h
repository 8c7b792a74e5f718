#pragma once
// The standard controls the editors use: label, button, frame, check box, plain text box,
// option-button array and up-down.
#include <array>
#include <cstddef>
#include <cstdint>

#include "dialog/Control.h"

namespace nv {

class Label : public Control {
 public:
  Text Caption;
};

class Frame : public Control {
 public:
  Text Caption;
};

class Button : public Control {
 public:
  Text Caption;
  Notification OnClick;

  // A user's click: a disabled button takes none.
  void Click() {
    if (Enabled) Raise(OnClick);
  }
};

// Values 0 unchecked, 1 checked, 2 greyed. Setting the value by program raises nothing.
class CheckBox : public Control {
 public:
  Text Caption;
  std::int16_t Value = 0;
  Notification OnClick;

  // A user's click: toggles between checked and unchecked, then notifies.
  void Click() {
    if (!Enabled) return;
    Value = Value == 0 ? 1 : 0;
    Raise(OnClick);
  }
};

// A text box that takes no typing of its own; it only reports getting the focus.
class TextBox : public Control {
 public:
  Text Content;
  Notification OnGotFocus;

  void GotFocus() { Raise(OnGotFocus); }
};

// Option buttons sharing one handler by index; exactly one is chosen.
template <std::size_t N>
class OptionButtons : public Control {
 public:
  static constexpr std::size_t Count = N;
  std::array<Text, N> Captions;
  std::function<void(std::size_t)> OnClick;

  std::size_t Chosen() const noexcept { return chosen_; }
  // Choosing, by the user or by program, always notifies: the editors rely on the
  // handling running even when the option was already chosen.
  void Choose(std::size_t index) {
    chosen_ = index;
    if (OnClick) OnClick(index);
  }

 private:
  std::size_t chosen_ = 0;
};

// Only the arrows' clicks are used; the control keeps no value the editors read.
class UpDown : public Control {
 public:
  Notification OnUpClick;
  Notification OnDownClick;

  void ClickUp() { Raise(OnUpClick); }
  void ClickDown() { Raise(OnDownClick); }
};

}  // namespace nv
