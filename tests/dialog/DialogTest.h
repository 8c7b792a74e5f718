#pragma once
// Editors driven as the dialog and a user drive them, over recorded UI services and the
// stand-in host of scenario S.
#include "dialog/RecordingUiServices.h"
#include "store/ModuleState.h"
#include "store/Texts.h"
#include "tests/support/HostFixture.h"

namespace nv::test {

class DialogTest : public HostTest {
 public:
  void SetUp() override {
    HostTest::SetUp();
    Module().LanguageOffset = Language::English;
  }

  RecordingUiServices ui;
};

}  // namespace nv::test
