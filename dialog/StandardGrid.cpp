#include "dialog/StandardGrid.h"

#include "common/Error.h"

namespace nv {

// The current cell starts on the first row under the header, as the standard grid's does.
StandardGrid::StandardGrid() : rowData_(static_cast<std::size_t>(cells_.Rows()), 0) { cells_.SetRow(1); }

void StandardGrid::SetRows(std::int32_t rows) {
  cells_.SetRows(rows);
  rowData_.resize(static_cast<std::size_t>(rows), 0);
}

std::int32_t StandardGrid::RowData(std::int32_t row) const {
  if (row < 0 || row >= Rows()) RaiseError(ErrorNumber::SubscriptOutOfRange);
  return rowData_[static_cast<std::size_t>(row)];
}

void StandardGrid::SetRowData(std::int32_t row, std::int32_t data) {
  if (row < 0 || row >= Rows()) RaiseError(ErrorNumber::SubscriptOutOfRange);
  rowData_[static_cast<std::size_t>(row)] = data;
}

void StandardGrid::Clear() {
  for (std::int32_t row = 0; row < Rows(); ++row) {
    for (std::int32_t col = 0; col < Cols(); ++col) cells_.SetTextMatrix(row, col, {});
  }
}

}  // namespace nv
