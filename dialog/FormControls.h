#pragma once
// The standard controls of the task dialog: the tab control, the drop-down list and the
// picture box.
#include <cstdint>
#include <vector>

#include "dialog/Control.h"

namespace nv {

// Tabs by index; the front tab is the one shown. An unavailable tab takes no user click.
class TabControl : public Control {
 public:
  explicit TabControl(std::int32_t tabs);

  std::int32_t Tabs() const noexcept { return static_cast<std::int32_t>(tabs_.size()); }
  std::int32_t Tab() const noexcept { return front_; }
  void SetTab(std::int32_t index);
  bool TabEnabled(std::int32_t index) const;
  void SetTabEnabled(std::int32_t index, bool enabled);
  const Text& TabCaption(std::int32_t index) const;
  void SetTabCaption(std::int32_t index, const Text& caption);

  // The user's click on a tab.
  void ClickTab(std::int32_t index);

 private:
  struct Page {
    Text Caption;
    bool Enabled = true;
  };
  Page& At(std::int32_t index);
  const Page& At(std::int32_t index) const;

  std::vector<Page> tabs_;
  std::int32_t front_ = 0;
};

// A list that only offers its entries. Selecting, by program or by the user, notifies.
class ComboBox : public Control {
 public:
  void Clear();
  void AddItem(const Text& item, std::int32_t index);
  std::int32_t ListCount() const noexcept { return static_cast<std::int32_t>(items_.size()); }
  const Text& List(std::int32_t index) const;
  // -1 when nothing is selected.
  std::int32_t ListIndex() const noexcept { return index_; }
  void SetListIndex(std::int32_t index);
  // The selected entry's text; empty with no selection.
  Text GetText() const;

  Notification OnClick;

 private:
  std::vector<Text> items_;
  std::int32_t index_ = -1;
};

class PictureBox : public Control {
 public:
  std::int16_t BorderStyle = 1;  // 0 none, 1 fixed single
  Text Picture;                  // the module's resource shown; empty for none
};

}  // namespace nv
