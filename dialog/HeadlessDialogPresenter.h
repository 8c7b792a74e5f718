#pragma once
// Dialogs without a screen: each shown dialog runs a script that plays the user.
#include <memory>

#include "dialog/FormTaskDialog.h"

namespace nv {

class HeadlessDialogPresenter final : public DialogPresenter {
 public:
  HeadlessDialogPresenter(UiServices& ui, ModalLoop script) : ui_(ui), script_(std::move(script)) {}

  std::unique_ptr<TaskDialog> CreateTaskDialog() override;

  // The last dialog was still shown when its script ended: a window would still be waiting.
  bool LeftOpen() const noexcept { return leftOpen_; }

 private:
  UiServices& ui_;
  ModalLoop script_;
  bool leftOpen_ = false;
};

}  // namespace nv
