// What the grid shows and where: its cells' places, scrolling, and the painting itself.
#include <algorithm>
#include <string>

#include "platform/win32/dialog/GridWindow.h"
#include "platform/win32/dialog/WideText.h"

namespace nv::win {
namespace {

COLORREF ColourOf(std::uint32_t colour, int fallback) {
  if (colour == 0) return GetSysColor(fallback);
  if (colour & 0x80000000u) return GetSysColor(static_cast<int>(colour & 0xFFu));
  return static_cast<COLORREF>(colour & 0xFFFFFFu);
}

int Px(int dpi, int pixelsAt96) { return MulDiv(pixelsAt96, dpi, 96); }

}  // namespace

RECT GridWindow::DataArea() const {
  RECT client{};
  GetClientRect(window_, &client);
  if (plus_) client.bottom = std::max<LONG>(client.top, client.bottom - Px(dpi_, kButtonStrip));
  return client;
}

std::vector<int> GridWindow::ColumnWidths() const {
  std::vector<int> widths;
  int total = 0;
  for (std::int32_t col = 0; col < source_.Cols(); ++col) {
    const auto widened = widths_.find(col);
    widths.push_back(widened != widths_.end() ? widened->second : MulDiv(source_.ColWidthTwips(col), dpi_, 1440));
    total += widths.back();
  }
  // A grid with a header row, narrower than its window, gives the rest to its last
  // column (unless the person sized that one); a grid of fields in columns keeps its widths.
  const RECT area = DataArea();
  const bool lastSized = widths_.count(source_.Cols() - 1) != 0;
  if (!widths.empty() && !lastSized && source_.FixedRows() > 0 && total < area.right) widths.back() += area.right - total;
  return widths;
}

int GridWindow::ColumnLeft(const std::vector<int>& widths, std::int32_t col) const {
  const std::int32_t fixedCols = std::min(source_.FixedCols(), source_.Cols());
  int left = 0;
  for (std::int32_t c = 0; c < col; ++c) left += widths[static_cast<std::size_t>(c)];
  if (col < fixedCols) return left;
  // Scrolling columns start after the fixed ones, less the columns scrolled out.
  for (std::int32_t c = fixedCols; c < fixedCols + leftCol_ && c < source_.Cols(); ++c) left -= widths[static_cast<std::size_t>(c)];
  return left;
}

RECT GridWindow::CellBounds(std::int32_t row, std::int32_t col) const {
  RECT empty{};
  if (row < 0 || col < 0 || row >= source_.Rows() || col >= source_.Cols()) return empty;
  const std::vector<int> widths = ColumnWidths();
  const std::int32_t fixedRows = std::min(source_.FixedRows(), source_.Rows());
  const std::int32_t shownRow = row < fixedRows ? row : row - topRow_;
  const int left = ColumnLeft(widths, col);
  return {left, shownRow * rowHeight_, left + widths[static_cast<std::size_t>(col)], (shownRow + 1) * rowHeight_};
}

RECT GridWindow::CellRect(std::int32_t row, std::int32_t col) const {
  RECT empty{};
  if (row < 0 || col < 0 || row >= source_.Rows() || col >= source_.Cols()) return empty;
  const std::int32_t fixedRows = std::min(source_.FixedRows(), source_.Rows());
  const std::int32_t fixedCols = std::min(source_.FixedCols(), source_.Cols());
  if (row >= fixedRows && row - fixedRows < topRow_) return empty;
  if (col >= fixedCols && col - fixedCols < leftCol_) return empty;
  const RECT cell = CellBounds(row, col);
  const RECT area = DataArea();
  if (cell.left >= area.right || cell.top >= area.bottom) return empty;
  return cell;
}

RECT GridWindow::ScrollArea() const {
  RECT area = DataArea();
  const std::vector<int> widths = ColumnWidths();
  const std::int32_t fixedCols = std::min(source_.FixedCols(), source_.Cols());
  for (std::int32_t c = 0; c < fixedCols; ++c) area.left += widths[static_cast<std::size_t>(c)];
  area.top += std::min(source_.FixedRows(), source_.Rows()) * rowHeight_;
  area.left = std::min(area.left, area.right);
  area.top = std::min(area.top, area.bottom);
  return area;
}

bool GridWindow::HitTest(POINT point, std::int32_t& row, std::int32_t& col, bool fixedToo) const {
  const std::int32_t firstRow = fixedToo ? 0 : source_.FixedRows();
  const std::int32_t firstCol = fixedToo ? 0 : source_.FixedCols();
  for (std::int32_t r = firstRow; r < source_.Rows(); ++r) {
    for (std::int32_t c = firstCol; c < source_.Cols(); ++c) {
      const RECT cell = CellRect(r, c);
      if (PtInRect(&cell, point)) {
        row = r;
        col = c;
        return true;
      }
    }
  }
  return false;
}

int GridWindow::TextWidth(const Text& text) const {
  const std::wstring wide = Wide(text);
  const WindowDc dc(window_);
  const SelectedObject font(dc.get(), font_);
  SIZE size{};
  GetTextExtentPoint32W(dc.get(), wide.c_str(), static_cast<int>(wide.size()), &size);
  return size.cx;
}

// The text shows whole in its cell: one line, within the cell's margins.
bool GridWindow::Fits(std::int32_t row, std::int32_t col) const {
  const RECT cell = CellRect(row, col);
  if (IsRectEmpty(&cell)) return true;
  const Text& text = source_.Cell(row, col);
  if (text.empty()) return true;
  if (text.find_first_of(u"\r\n") != Text::npos) return false;
  return TextWidth(text) <= cell.right - cell.left - 2 * Px(dpi_, 4);
}

void GridWindow::Paint(HDC dc, const RECT& client) {
  FillRect(dc, &client, GetSysColorBrush(COLOR_WINDOW));
  const SelectedObject font(dc, font_);
  SetBkMode(dc, TRANSPARENT);
  for (std::int32_t row = 0; row < source_.Rows(); ++row) {
    for (std::int32_t col = 0; col < source_.Cols(); ++col) {
      const RECT cell = CellRect(row, col);
      if (!IsRectEmpty(&cell)) PaintCell(dc, row, col, cell);
    }
  }
  if (plus_) {
    RECT strip = client;
    strip.top = DataArea().bottom;
    FillRect(dc, &strip, GetSysColorBrush(COLOR_BTNFACE));
  }
  // Focused without a current cell to mark (no data yet): the grid itself shows the focus.
  if (GetFocus() == window_ && !CurrentIsDataCell()) {
    RECT area = DataArea();
    InflateRect(&area, -1, -1);
    DrawFocusRect(dc, &area);
  }
}

void GridWindow::PaintCell(HDC dc, std::int32_t row, std::int32_t col, const RECT& cell) {
  const bool fixed = row < source_.FixedRows() || col < source_.FixedCols();
  const COLORREF back = fixed ? GetSysColor(COLOR_BTNFACE) : ColourOf(source_.BackColour(row, col), COLOR_WINDOW);
  SetDCBrushColor(dc, back);
  FillRect(dc, &cell, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  // Lines on the right and bottom edges; fixed cells get a raised look.
  SetDCPenColor(dc, GetSysColor(fixed ? COLOR_BTNSHADOW : COLOR_3DLIGHT));
  const HGDIOBJ pen = GetStockObject(DC_PEN);
  {
    const SelectedObject selected(dc, pen);
    MoveToEx(dc, cell.left, cell.bottom - 1, nullptr);
    LineTo(dc, cell.right - 1, cell.bottom - 1);
    LineTo(dc, cell.right - 1, cell.top - 1);
  }
  const Text& content = source_.Cell(row, col);
  if (!content.empty()) {
    RECT inner = cell;
    InflateRect(&inner, -Px(dpi_, 4), 0);
    UINT format = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
    switch (source_.Alignment(row, col)) {
      case CellAlign::Centre: format |= DT_CENTER; break;
      case CellAlign::Right: format |= DT_RIGHT; break;
      case CellAlign::Left: break;
    }
    SetTextColor(dc, GetSysColor(fixed ? COLOR_BTNTEXT : COLOR_WINDOWTEXT));
    const std::wstring text = Wide(content);
    DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &inner, format);
  }
  if (!fixed && row == source_.Row() && col == source_.Col()) {
    RECT mark = cell;
    mark.right -= 1;
    mark.bottom -= 1;
    SetDCBrushColor(dc, GetSysColor(GetFocus() == window_ ? COLOR_HIGHLIGHT : COLOR_BTNSHADOW));
    const HBRUSH brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    FrameRect(dc, &mark, brush);
    InflateRect(&mark, -1, -1);
    FrameRect(dc, &mark, brush);
  }
}

void GridWindow::UpdateScrollBars() {
  if (updatingBars_) return;
  updatingBars_ = true;
  // A bar that comes or goes changes the room for the cells, and so perhaps the other bar.
  for (int round = 0; round < 3; ++round) {
    const RECT before = DataArea();
    SetScrollBars();
    const RECT after = DataArea();
    if (EqualRect(&before, &after)) break;
  }
  updatingBars_ = false;
}

// A bar shows only when there is something to scroll.
void GridWindow::SetScrollBars() {
  const RECT area = DataArea();
  const std::int32_t fixedRows = std::min(source_.FixedRows(), source_.Rows());
  const std::int32_t fixedCols = std::min(source_.FixedCols(), source_.Cols());
  const std::int32_t scrollRows = source_.Rows() - fixedRows;
  const int fitRows = std::max(1, static_cast<int>((area.bottom - fixedRows * rowHeight_) / rowHeight_));
  topRow_ = std::clamp(topRow_, 0, std::max(0, scrollRows - fitRows));
  SCROLLINFO vertical{sizeof(SCROLLINFO), SIF_ALL, 0, std::max(0, scrollRows - 1),
                      static_cast<UINT>(fitRows), topRow_, 0};
  SetScrollInfo(window_, SB_VERT, &vertical, TRUE);

  const std::vector<int> widths = ColumnWidths();
  int fixedWidth = 0;
  for (std::int32_t c = 0; c < fixedCols; ++c) fixedWidth += widths[static_cast<std::size_t>(c)];
  const std::int32_t scrollCols = source_.Cols() - fixedCols;
  // How many columns fit when the last ones are shown: the furthest the grid scrolls.
  int room = area.right - fixedWidth;
  int fitCols = 0;
  for (std::int32_t c = source_.Cols() - 1; c >= fixedCols && room >= widths[static_cast<std::size_t>(c)]; --c) {
    room -= widths[static_cast<std::size_t>(c)];
    ++fitCols;
  }
  fitCols = std::max(fitCols, 1);
  leftCol_ = std::clamp(leftCol_, 0, std::max(0, scrollCols - fitCols));
  SCROLLINFO horizontal{sizeof(SCROLLINFO), SIF_ALL, 0, std::max(0, scrollCols - 1),
                        static_cast<UINT>(fitCols), leftCol_, 0};
  SetScrollInfo(window_, SB_HORZ, &horizontal, TRUE);
}

void GridWindow::EnsureCurrentVisible() {
  const std::int32_t row = source_.Row() - source_.FixedRows();
  const std::int32_t col = source_.Col() - source_.FixedCols();
  const RECT area = DataArea();
  if (row >= 0) {
    const int fitRows = std::max(1, static_cast<int>((area.bottom - source_.FixedRows() * rowHeight_) / rowHeight_));
    if (row < topRow_) topRow_ = row;
    if (row >= topRow_ + fitRows) topRow_ = row - fitRows + 1;
  }
  if (col >= 0) {
    if (col < leftCol_) leftCol_ = col;
    while (leftCol_ < col) {
      const RECT cell = CellRect(source_.Row(), source_.Col());
      if (!IsRectEmpty(&cell) && cell.right <= area.right) break;
      ++leftCol_;
    }
  }
  UpdateScrollBars();
}

}  // namespace nv::win
