#pragma once
// One binding per real control: it brings the window in line with its model control
// (only what differs, so that nothing flickers or echoes back) and turns the window's
// notifications into the model's user-side calls.
#include <windows.h>

#include <cstddef>
#include <vector>

#include "dialog/FormControls.h"
#include "dialog/SimpleControls.h"
#include "dialog/TextBoxVar.h"
#include "platform/win32/dialog/WindowHandles.h"

namespace nv::win {

class GridWindow;

class Binding {
 public:
  Binding(Control& model, HWND window) : model_(model), window_(window) {}
  Binding(const Binding&) = delete;
  Binding& operator=(const Binding&) = delete;
  virtual ~Binding() = default;

  // Model to window.
  virtual void Sync();
  // A WM_COMMAND notification from the window; true when it reached the model.
  virtual bool Command(WORD) { return false; }
  // A WM_NOTIFY from the window; true when handled, with the result to return.
  virtual bool Notify(const NMHDR&, LRESULT&) { return false; }

  HWND Window() const noexcept { return window_; }
  const Control& Model() const noexcept { return model_; }
  Control& Model() noexcept { return model_; }

 protected:
  void SyncText(const Text& text);
  Text WindowText() const;

 private:
  Control& model_;
  HWND window_;
};

class LabelBinding final : public Binding {
 public:
  LabelBinding(Label& label, HWND window) : Binding(label, window), label_(label) {}
  void Sync() override;

 private:
  Label& label_;
};

class FrameBinding final : public Binding {
 public:
  FrameBinding(Frame& frame, HWND window) : Binding(frame, window), frame_(frame) {}
  void Sync() override;

 private:
  Frame& frame_;
};

class ButtonBinding final : public Binding {
 public:
  // A button whose caption the model does not give (a picture) keeps its own.
  ButtonBinding(Button& button, HWND window, bool captioned = true)
      : Binding(button, window), button_(button), captioned_(captioned) {}
  void Sync() override;
  bool Command(WORD code) override;

 private:
  Button& button_;
  bool captioned_;
};

class CheckBinding final : public Binding {
 public:
  CheckBinding(CheckBox& check, HWND window) : Binding(check, window), check_(check) {}
  void Sync() override;
  bool Command(WORD code) override;

 private:
  CheckBox& check_;
};

class OptionBinding final : public Binding {
 public:
  OptionBinding(OptionButtons<9>& options, std::size_t index, HWND window)
      : Binding(options, window), options_(options), index_(index) {}
  void Sync() override;
  bool Command(WORD code) override;

 private:
  OptionButtons<9>& options_;
  std::size_t index_;
};

class TextBoxVarBinding final : public Binding {
 public:
  TextBoxVarBinding(TextBoxVar& box, HWND window) : Binding(box, window), box_(box) {}
  void Sync() override;
  bool Command(WORD code) override;

 private:
  TextBoxVar& box_;
};

// A plain text box: shown text, the focus notification, and typing where it takes any.
class TextBoxBinding final : public Binding {
 public:
  TextBoxBinding(TextBox& box, HWND window, bool takesTyping) : Binding(box, window), box_(box), typing_(takesTyping) {}
  void Sync() override;
  bool Command(WORD code) override;

 private:
  TextBox& box_;
  bool typing_;
};

class ComboBinding final : public Binding {
 public:
  ComboBinding(ComboBox& combo, HWND window) : Binding(combo, window), combo_(combo) {}
  void Sync() override;
  bool Command(WORD code) override;

 private:
  ComboBox& combo_;
  std::vector<Text> shownItems_;
};

class UpDownBinding final : public Binding {
 public:
  UpDownBinding(UpDown& upDown, HWND window) : Binding(upDown, window), upDown_(upDown) {}
  bool Notify(const NMHDR& header, LRESULT& result) override;

 private:
  UpDown& upDown_;
};

// The tab row shows the available tabs only; each model tab has a page window.
class TabBinding final : public Binding {
 public:
  TabBinding(TabControl& tabs, HWND window, std::vector<HWND> pages)
      : Binding(tabs, window), tabs_(tabs), pages_(std::move(pages)) {}
  void Sync() override;
  bool Notify(const NMHDR& header, LRESULT& result) override;

 private:
  TabControl& tabs_;
  std::vector<HWND> pages_;
  std::vector<std::int32_t> shownTabs_;
  std::vector<Text> shownCaptions_;
};

class PictureBinding final : public Binding {
 public:
  PictureBinding(PictureBox& picture, HWND window, HMODULE resources)
      : Binding(picture, window), picture_(picture), resources_(resources) {}
  void Sync() override;

 private:
  PictureBox& picture_;
  HMODULE resources_;
  Text shownPicture_;
  unique_hicon icon_;
};

class GridBinding final : public Binding {
 public:
  GridBinding(Control& grid, GridWindow& window);
  void Sync() override;

 private:
  GridWindow& grid_;
};

}  // namespace nv::win
