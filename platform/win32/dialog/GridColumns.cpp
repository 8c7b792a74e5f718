// Columns the person widens: by dragging a column's right border (in the header row
// where the grid has one, on any row where it has none), or to fit the column's texts
// by a double click on the border. The layout's widths stay the starting widths.
#include <algorithm>
#include <cstdlib>

#include "platform/win32/dialog/GridWindow.h"

namespace nv::win {
namespace {

int Px(int dpi, int pixelsAt96) { return MulDiv(pixelsAt96, dpi, 96); }

}  // namespace

std::int32_t GridWindow::BorderAt(POINT point) const {
  const RECT area = DataArea();
  const std::int32_t rowsShown = source_.FixedRows() > 0 ? source_.FixedRows() : source_.Rows();
  if (point.y < 0 || point.y >= std::min<LONG>(area.bottom, rowsShown * rowHeight_)) return -1;
  const std::vector<int> widths = ColumnWidths();
  const int reach = Px(dpi_, 3);
  for (std::int32_t col = 0; col < source_.Cols(); ++col) {
    const std::int32_t fixedCols = std::min(source_.FixedCols(), source_.Cols());
    if (col >= fixedCols && col - fixedCols < leftCol_) continue;  // scrolled out
    const int right = ColumnLeft(widths, col) + widths[static_cast<std::size_t>(col)];
    if (right > area.right + reach) break;
    if (std::abs(point.x - right) <= reach) return col;
  }
  return -1;
}

void GridWindow::SetColumnWidth(std::int32_t col, int width) {
  width = std::max(width, Px(dpi_, 12));
  const auto found = widths_.find(col);
  if (found != widths_.end() && found->second == width) return;
  widths_[col] = width;
  UpdateScrollBars();
  InvalidateRect(window_, nullptr, FALSE);
  ViewChanged();
}

void GridWindow::FitColumn(std::int32_t col) {
  int widest = 0;
  for (std::int32_t row = 0; row < source_.Rows(); ++row) widest = std::max(widest, TextWidth(source_.Cell(row, col)));
  // The cell's margins on both sides and its grid line.
  SetColumnWidth(col, widest + 2 * Px(dpi_, 4) + 2);
}

}  // namespace nv::win
