#include "platform/win32/dialog/ControlBindings.h"

#include <commctrl.h>

#include <string>

#include "platform/win32/dialog/GridWindow.h"
#include "platform/win32/dialog/WideText.h"

namespace nv::win {

void Binding::Sync() {
  const bool enabled = IsWindowEnabled(window_) != FALSE;
  if (enabled != model_.Enabled) EnableWindow(window_, model_.Enabled);
  const bool visible = (GetWindowLongPtrW(window_, GWL_STYLE) & WS_VISIBLE) != 0;
  if (visible != model_.Visible) ShowWindow(window_, model_.Visible ? SW_SHOWNA : SW_HIDE);
}

Text Binding::WindowText() const {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window_, text.data(), static_cast<int>(text.size()))));
  return FromWide(text);
}

void Binding::SyncText(const Text& text) {
  if (WindowText() != text) SetWindowTextW(window_, Wide(text).c_str());
}

void LabelBinding::Sync() {
  Binding::Sync();
  SyncText(label_.Caption);
}

void FrameBinding::Sync() {
  Binding::Sync();
  SyncText(frame_.Caption);
}

void ButtonBinding::Sync() {
  Binding::Sync();
  if (captioned_) SyncText(button_.Caption);
}

bool ButtonBinding::Command(WORD code) {
  if (code != BN_CLICKED) return false;
  button_.Click();
  return true;
}

void CheckBinding::Sync() {
  Binding::Sync();
  SyncText(check_.Caption);
  const WPARAM state = check_.Value == 1 ? BST_CHECKED : check_.Value == 2 ? BST_INDETERMINATE : BST_UNCHECKED;
  if (static_cast<WPARAM>(SendMessageW(Window(), BM_GETCHECK, 0, 0)) != state) SendMessageW(Window(), BM_SETCHECK, state, 0);
}

bool CheckBinding::Command(WORD code) {
  if (code != BN_CLICKED) return false;
  check_.Click();
  return true;
}

void OptionBinding::Sync() {
  Binding::Sync();
  SyncText(options_.Captions[index_]);
  const WPARAM state = options_.Chosen() == index_ ? BST_CHECKED : BST_UNCHECKED;
  if (static_cast<WPARAM>(SendMessageW(Window(), BM_GETCHECK, 0, 0)) != state) SendMessageW(Window(), BM_SETCHECK, state, 0);
  // Tab enters the group at the chosen option, as Windows users expect.
  const LONG_PTR style = GetWindowLongPtrW(Window(), GWL_STYLE);
  const LONG_PTR wanted = state == BST_CHECKED ? style | WS_TABSTOP : style & ~WS_TABSTOP;
  if (wanted != style) SetWindowLongPtrW(Window(), GWL_STYLE, wanted);
}

bool OptionBinding::Command(WORD code) {
  if (code != BN_CLICKED) return false;
  if (options_.Enabled) options_.Choose(index_);
  return true;
}

void TextBoxVarBinding::Sync() {
  Binding::Sync();
  SyncText(box_.GetText());
  const bool readOnly = (GetWindowLongPtrW(Window(), GWL_STYLE) & ES_READONLY) != 0;
  if (readOnly == box_.Editable) SendMessageW(Window(), EM_SETREADONLY, !box_.Editable, 0);
}

bool TextBoxVarBinding::Command(WORD code) {
  if (code != EN_CHANGE) return false;
  const Text typed = WindowText();
  if (typed != box_.GetText()) box_.Type(typed);
  return true;
}

void TextBoxBinding::Sync() {
  Binding::Sync();
  SyncText(box_.Content);
}

bool TextBoxBinding::Command(WORD code) {
  if (code == EN_SETFOCUS) {
    box_.GotFocus();
    return true;
  }
  if (code == EN_CHANGE && typing_) {
    box_.Content = WindowText();
    return true;
  }
  return false;
}

void ComboBinding::Sync() {
  Binding::Sync();
  std::vector<Text> items;
  for (std::int32_t i = 0; i < combo_.ListCount(); ++i) items.push_back(combo_.List(i));
  if (items != shownItems_) {
    SendMessageW(Window(), CB_RESETCONTENT, 0, 0);
    for (const Text& item : items) SendMessageW(Window(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(item).c_str()));
    shownItems_ = std::move(items);
  }
  const auto index = static_cast<LRESULT>(combo_.ListIndex());
  if (SendMessageW(Window(), CB_GETCURSEL, 0, 0) != index) SendMessageW(Window(), CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

bool ComboBinding::Command(WORD code) {
  if (code != CBN_SELCHANGE) return false;
  const auto index = static_cast<std::int32_t>(SendMessageW(Window(), CB_GETCURSEL, 0, 0));
  if (index >= 0) combo_.SetListIndex(index);
  return true;
}

bool UpDownBinding::Notify(const NMHDR& header, LRESULT& result) {
  if (header.code != UDN_DELTAPOS) return false;
  const auto& change = reinterpret_cast<const NMUPDOWN&>(header);
  if (change.iDelta > 0) upDown_.ClickUp();
  if (change.iDelta < 0) upDown_.ClickDown();
  // The control keeps no position of its own: every click stays a click, at any count.
  result = TRUE;
  return true;
}

void TabBinding::Sync() {
  Binding::Sync();
  std::vector<std::int32_t> shown;
  std::vector<Text> captions;
  for (std::int32_t tab = 0; tab < tabs_.Tabs(); ++tab) {
    if (!tabs_.TabEnabled(tab)) continue;
    shown.push_back(tab);
    captions.push_back(tabs_.TabCaption(tab));
  }
  if (shown != shownTabs_ || captions != shownCaptions_) {
    SendMessageW(Window(), TCM_DELETEALLITEMS, 0, 0);
    for (std::size_t i = 0; i < shown.size(); ++i) {
      std::wstring caption = Wide(captions[i]);
      TCITEMW item{};
      item.mask = TCIF_TEXT;
      item.pszText = caption.data();
      SendMessageW(Window(), TCM_INSERTITEMW, i, reinterpret_cast<LPARAM>(&item));
    }
    shownTabs_ = std::move(shown);
    shownCaptions_ = std::move(captions);
  }
  int selected = -1;
  for (std::size_t i = 0; i < shownTabs_.size(); ++i) {
    if (shownTabs_[i] == tabs_.Tab()) selected = static_cast<int>(i);
  }
  if (SendMessageW(Window(), TCM_GETCURSEL, 0, 0) != selected) SendMessageW(Window(), TCM_SETCURSEL, static_cast<WPARAM>(selected), 0);
  for (std::size_t page = 0; page < pages_.size(); ++page) {
    const bool front = static_cast<std::int32_t>(page) == tabs_.Tab();
    const bool visible = (GetWindowLongPtrW(pages_[page], GWL_STYLE) & WS_VISIBLE) != 0;
    if (front != visible) ShowWindow(pages_[page], front ? SW_SHOWNA : SW_HIDE);
  }
}

bool TabBinding::Notify(const NMHDR& header, LRESULT& result) {
  if (header.code != TCN_SELCHANGE) return false;
  const auto index = static_cast<std::size_t>(SendMessageW(Window(), TCM_GETCURSEL, 0, 0));
  if (index < shownTabs_.size()) tabs_.ClickTab(shownTabs_[index]);
  result = 0;
  return true;
}

void PictureBinding::Sync() {
  Binding::Sync();
  const LONG_PTR exStyle = GetWindowLongPtrW(Window(), GWL_EXSTYLE);
  const bool bordered = (exStyle & WS_EX_STATICEDGE) != 0;
  if (bordered != (picture_.BorderStyle != 0)) {
    SetWindowLongPtrW(Window(), GWL_EXSTYLE, picture_.BorderStyle != 0 ? exStyle | WS_EX_STATICEDGE : exStyle & ~WS_EX_STATICEDGE);
    SetWindowPos(Window(), nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
  }
  if (picture_.Picture == shownPicture_) return;
  shownPicture_ = picture_.Picture;
  unique_hicon icon;
  if (!shownPicture_.empty() && resources_) {
    icon.reset(static_cast<HICON>(LoadImageW(resources_, Wide(shownPicture_).c_str(), IMAGE_ICON, 32, 32, 0)));
  }
  SendMessageW(Window(), STM_SETICON, reinterpret_cast<WPARAM>(icon.get()), 0);
  icon_ = std::move(icon);
}

GridBinding::GridBinding(Control& grid, GridWindow& window) : Binding(grid, window.Handle()), grid_(window) {}

void GridBinding::Sync() {
  Binding::Sync();
  grid_.Refresh();
}

}  // namespace nv::win
