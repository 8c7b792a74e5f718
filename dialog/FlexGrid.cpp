#include "dialog/FlexGrid.h"

#include <algorithm>

#include "common/Error.h"

namespace nv {

void InnerGrid::SetCellAlignment(std::int16_t alignment) { grid_.At(grid_.row_, grid_.col_).Alignment = alignment; }

std::int32_t InnerGrid::CellLeft() const {
  std::int32_t left = 0;
  for (std::int32_t c = 0; c < grid_.col_; ++c) left += grid_.ColWidth(c);
  return left;
}

std::int32_t InnerGrid::CellTop() const { return grid_.row_ * FlexGrid::kRowHeight; }
std::int32_t InnerGrid::CellWidth() const { return grid_.ColWidth(grid_.col_); }
std::int32_t InnerGrid::CellHeight() const { return FlexGrid::kRowHeight; }

FlexGrid::FlexGrid() : inner_(*this) { Resize(2, 2); }

const FlexGrid::Cell& FlexGrid::At(std::int32_t row, std::int32_t col) const {
  if (row < 0 || row >= rows_ || col < 0 || col >= cols_) RaiseError(ErrorNumber::SubscriptOutOfRange);
  return cells_[row][col];
}

FlexGrid::Cell& FlexGrid::At(std::int32_t row, std::int32_t col) {
  return const_cast<Cell&>(static_cast<const FlexGrid&>(*this).At(row, col));
}

const Text& FlexGrid::TextMatrix(std::int32_t row, std::int32_t col) const { return At(row, col).Content; }
void FlexGrid::SetTextMatrix(std::int32_t row, std::int32_t col, const Text& text) { At(row, col).Content = text; }

void FlexGrid::Resize(std::int32_t rows, std::int32_t cols) {
  if (rows < 0 || cols < 0) RaiseError(ErrorNumber::InvalidProcedureCall);
  cells_.resize(rows);
  for (auto& line : cells_) line.resize(cols);
  rows_ = rows;
  cols_ = cols;
  // The current cell stays inside the grid.
  row_ = std::clamp(row_, 0, std::max(rows_ - 1, 0));
  col_ = std::clamp(col_, 0, std::max(cols_ - 1, 0));
}

void FlexGrid::SetRows(std::int32_t rows) { Resize(rows, cols_); }
void FlexGrid::SetCols(std::int32_t cols) { Resize(rows_, cols); }

void FlexGrid::SetRow(std::int32_t row) {
  if (row < 0 || row >= rows_) RaiseError(ErrorNumber::SubscriptOutOfRange);
  row_ = row;
}

void FlexGrid::SetCol(std::int32_t col) {
  if (col < 0 || col >= cols_) RaiseError(ErrorNumber::SubscriptOutOfRange);
  col_ = col;
}

std::int32_t FlexGrid::ColWidth(std::int32_t col) const {
  const auto found = widths_.find(col);
  return found == widths_.end() ? kDefaultColumnWidth : found->second;
}

std::int16_t FlexGrid::ColAlignment(std::int32_t col) const {
  const auto found = columnAlignments_.find(col);
  return found == columnAlignments_.end() ? std::int16_t{0} : found->second;
}

std::int16_t FlexGrid::CellAlignmentAt(std::int32_t row, std::int32_t col) const { return At(row, col).Alignment; }
std::uint32_t FlexGrid::CellBackColorAt(std::int32_t row, std::int32_t col) const { return At(row, col).BackColour; }
void FlexGrid::SetCellBackColor(std::uint32_t colour) { At(row_, col_).BackColour = colour; }

void FlexGrid::AddColumn() {
  SetCols(cols_ + 1);
  Raise(OnColumnAdded);
}

void FlexGrid::EnterCell(std::int32_t row, std::int32_t col) {
  SetRow(row);
  SetCol(col);
  Raise(OnCellEntered);
}

void FlexGrid::EditCell(const Text& typed) {
  editor_.Content = typed;
  Raise(OnEditCheck);
  Raise(OnEditTrim);
  SetTextMatrix(row_, col_, editor_.Content);
}

void FlexGrid::ClickPlus() {
  if (ShowPlusMoins) AddColumn();
}

void FlexGrid::ClickMinus() {
  if (!ShowPlusMoins || col_ < FixedCols || cols_ <= FixedCols) return;
  for (auto& line : cells_) line.erase(line.begin() + col_);
  --cols_;
  col_ = std::min(col_, cols_ - 1);
  Raise(OnColumnRemoved);
}

}  // namespace nv
