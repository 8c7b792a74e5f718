#pragma once
// The host's editing grid: cells, counts, current cell, layout, input settings, its plus
// and minus buttons, an inner grid for cell geometry and an in-cell editor.
#include <cstdint>
#include <map>
#include <vector>

#include "dialog/Control.h"

namespace nv {

namespace CellAlignment {
constexpr std::int16_t LeftCenter = 1;
constexpr std::int16_t CenterCenter = 4;
}  // namespace CellAlignment

// The system colour "button face", as the grid takes colours.
constexpr std::uint32_t kButtonFaceColour = 0x8000000F;

class FlexGrid;

// The standard grid inside: alignment of the current cell and its geometry, in twips
// from the grid's own corner.
class InnerGrid {
 public:
  explicit InnerGrid(FlexGrid& grid) : grid_(grid) {}
  void SetCellAlignment(std::int16_t alignment);
  std::int32_t CellLeft() const;
  std::int32_t CellTop() const;
  std::int32_t CellWidth() const;
  std::int32_t CellHeight() const;

 private:
  FlexGrid& grid_;
};

struct InCellEditor {
  Text Content;
};

class FlexGrid : public Control {
 public:
  static constexpr std::int32_t kRowHeight = 240;
  static constexpr std::int32_t kDefaultColumnWidth = 1000;

  FlexGrid();

  // Cells by row and column; outside the grid is a subscript error.
  const Text& TextMatrix(std::int32_t row, std::int32_t col) const;
  void SetTextMatrix(std::int32_t row, std::int32_t col, const Text& text);

  std::int32_t Rows() const noexcept { return rows_; }
  std::int32_t Cols() const noexcept { return cols_; }
  void SetRows(std::int32_t rows);
  void SetCols(std::int32_t cols);

  // The current cell.
  std::int32_t Row() const noexcept { return row_; }
  std::int32_t Col() const noexcept { return col_; }
  void SetRow(std::int32_t row);
  void SetCol(std::int32_t col);

  // Kept per column index, also for columns the grid does not have yet.
  void SetColWidth(std::int32_t col, std::int32_t twips) { widths_[col] = twips; }
  std::int32_t ColWidth(std::int32_t col) const;
  void SetColAlignment(std::int32_t col, std::int16_t alignment) { columnAlignments_[col] = alignment; }
  std::int16_t ColAlignment(std::int32_t col) const;

  // Per cell; 0 is the column's own alignment, and colour 0 the grid's default.
  std::int16_t CellAlignmentAt(std::int32_t row, std::int32_t col) const;
  std::uint32_t CellBackColorAt(std::int32_t row, std::int32_t col) const;
  void SetCellBackColor(std::uint32_t colour);  // the current cell

  InnerGrid& Inner() noexcept { return inner_; }
  InCellEditor& Editor() noexcept { return editor_; }

  // The grid's add-column operation; it notifies like the plus button.
  void AddColumn();

  // The user's side: entering a cell, editing the current one, the plus and minus buttons.
  void EnterCell(std::int32_t row, std::int32_t col);
  // The editor takes the text; edit check and edit trim run; the editor's text is kept.
  void EditCell(const Text& typed);
  void ClickPlus();
  // Removes the current column when it is not a fixed one.
  void ClickMinus();

  Text Scenario;
  std::int32_t FixedRows = 1;
  std::int32_t FixedCols = 1;
  bool Reset = true;
  std::int16_t InputMode = 0;
  std::int16_t InputSetting = 0;
  // Persisted settings.
  bool NumeroteLignes = true;
  bool ShowPlusMoins = true;
  bool ShowInsertMenus = true;
  bool ShowMonterDescendre = true;
  bool AllowInsertKey = true;
  std::int16_t Mode = 0;
  std::int16_t TextBoxMode = 0;

  Notification OnCellEntered;
  Notification OnEditCheck;
  Notification OnEditTrim;
  Notification OnColumnAdded;
  Notification OnColumnRemoved;

 private:
  friend class InnerGrid;
  struct Cell {
    Text Content;
    std::int16_t Alignment = 0;
    std::uint32_t BackColour = 0;
  };
  const Cell& At(std::int32_t row, std::int32_t col) const;
  Cell& At(std::int32_t row, std::int32_t col);
  void Resize(std::int32_t rows, std::int32_t cols);

  std::int32_t rows_ = 0;
  std::int32_t cols_ = 0;
  std::int32_t row_ = 0;
  std::int32_t col_ = 0;
  std::vector<std::vector<Cell>> cells_;  // [row][col]
  std::map<std::int32_t, std::int32_t> widths_;
  std::map<std::int32_t, std::int16_t> columnAlignments_;
  InnerGrid inner_;
  InCellEditor editor_;
};

}  // namespace nv
