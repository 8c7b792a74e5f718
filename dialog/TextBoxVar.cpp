#include "dialog/TextBoxVar.h"

namespace nv {

void TextBoxVar::SetText(const Text& text) {
  if (text == text_) return;
  text_ = text;
  Raise(OnChange);
}

void TextBoxVar::Type(const Text& text) {
  if (Editable && Enabled) SetText(text);
}

}  // namespace nv
