#pragma once
// The host's variable-entry box: the text exactly as typed, the scenario it names variables
// of, and an editable flag.
#include "dialog/Control.h"

namespace nv {

class TextBoxVar : public Control {
 public:
  const Text& GetText() const noexcept { return text_; }
  // Program and user alike: every change of the text notifies.
  void SetText(const Text& text);
  // A user typing: only an editable, enabled box takes it.
  void Type(const Text& text);

  Text Scenario;
  bool Editable = true;
  Notification OnChange;

 private:
  Text text_;
};

}  // namespace nv
