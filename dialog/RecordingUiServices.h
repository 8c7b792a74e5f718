#pragma once
// UI services that only remember what was asked of them, for tests and headless runs.
#include <vector>

#include "dialog/UiServices.h"

namespace nv {

class RecordingUiServices final : public UiServices {
 public:
  struct Message {
    Text Prompt;
    std::int32_t Style = 0;
  };

  void MsgBox(const Text& prompt, std::int32_t style) override { Messages.push_back({prompt, style}); }
  void SetFocus(Control& control) override { Focused = &control; }
  ScreenSize GetScreenSize() override { return Screen; }
  void SendTabKey() override { ++TabKeys; }

  std::vector<Message> Messages;
  const Control* Focused = nullptr;
  ScreenSize Screen{15360, 11520};
  int TabKeys = 0;
};

}  // namespace nv
