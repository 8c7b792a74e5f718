#pragma once
// The standard flexible grid of the actions tab: cells, counts, the current cell, column
// widths, and one 32-bit data word per row.
#include <cstdint>
#include <vector>

#include "dialog/FlexGrid.h"

namespace nv {

class StandardGrid : public Control {
 public:
  StandardGrid();

  const Text& TextMatrix(std::int32_t row, std::int32_t col) const { return cells_.TextMatrix(row, col); }
  void SetTextMatrix(std::int32_t row, std::int32_t col, const Text& text) { cells_.SetTextMatrix(row, col, text); }
  // The current cell's text.
  const Text& GetText() const { return cells_.TextMatrix(cells_.Row(), cells_.Col()); }
  void SetText(const Text& text) { cells_.SetTextMatrix(cells_.Row(), cells_.Col(), text); }

  std::int32_t Rows() const noexcept { return cells_.Rows(); }
  std::int32_t Cols() const noexcept { return cells_.Cols(); }
  // Rows that go take their data words with them; new rows start at 0.
  void SetRows(std::int32_t rows);
  void SetCols(std::int32_t cols) { cells_.SetCols(cols); }
  std::int32_t Row() const noexcept { return cells_.Row(); }
  std::int32_t Col() const noexcept { return cells_.Col(); }
  void SetRow(std::int32_t row) { cells_.SetRow(row); }
  void SetCol(std::int32_t col) { cells_.SetCol(col); }
  void SetColWidth(std::int32_t col, std::int32_t twips) { cells_.SetColWidth(col, twips); }
  std::int32_t ColWidth(std::int32_t col) const { return cells_.ColWidth(col); }

  std::int32_t RowData(std::int32_t row) const;
  void SetRowData(std::int32_t row, std::int32_t data);

  // Empties every cell; counts, widths and data words stay (a row without text is no action,
  // whatever its data word).
  void Clear();
  // Repaints; counted so that a renderer (and a test) can see it asked for.
  void Refresh() { ++Refreshes; }

  std::int32_t FixedRows = 1;
  std::int32_t FixedCols = 0;
  int Refreshes = 0;

 private:
  FlexGrid cells_;
  std::vector<std::int32_t> rowData_;
};

}  // namespace nv
