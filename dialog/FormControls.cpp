#include "dialog/FormControls.h"

#include "common/Error.h"

namespace nv {

TabControl::TabControl(std::int32_t tabs) : tabs_(static_cast<std::size_t>(tabs)) {}

TabControl::Page& TabControl::At(std::int32_t index) {
  return const_cast<Page&>(static_cast<const TabControl&>(*this).At(index));
}

const TabControl::Page& TabControl::At(std::int32_t index) const {
  if (index < 0 || index >= Tabs()) RaiseError(ErrorNumber::InvalidProcedureCall);
  return tabs_[static_cast<std::size_t>(index)];
}

void TabControl::SetTab(std::int32_t index) {
  At(index);
  front_ = index;
}

bool TabControl::TabEnabled(std::int32_t index) const { return At(index).Enabled; }
void TabControl::SetTabEnabled(std::int32_t index, bool enabled) { At(index).Enabled = enabled; }
const Text& TabControl::TabCaption(std::int32_t index) const { return At(index).Caption; }
void TabControl::SetTabCaption(std::int32_t index, const Text& caption) { At(index).Caption = caption; }

void TabControl::ClickTab(std::int32_t index) {
  if (Enabled && At(index).Enabled) front_ = index;
}

void ComboBox::Clear() {
  items_.clear();
  index_ = -1;
}

void ComboBox::AddItem(const Text& item, std::int32_t index) {
  if (index < 0 || index > ListCount()) RaiseError(ErrorNumber::InvalidProcedureCall);
  items_.insert(items_.begin() + index, item);
}

const Text& ComboBox::List(std::int32_t index) const {
  if (index < 0 || index >= ListCount()) RaiseError(ErrorNumber::InvalidProcedureCall);
  return items_[static_cast<std::size_t>(index)];
}

void ComboBox::SetListIndex(std::int32_t index) {
  if (index < -1 || index >= ListCount()) RaiseError(ErrorNumber::InvalidProcedureCall);
  index_ = index;
  Raise(OnClick);
}

Text ComboBox::GetText() const { return index_ < 0 ? Text() : items_[static_cast<std::size_t>(index_)]; }

}  // namespace nv
