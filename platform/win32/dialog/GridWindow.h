#pragma once
// A grid window of our own for the editors' grids and the actions grid: fixed rows and
// columns, the current cell, alignments and cell colours, in-cell editing, scrolling,
// columns the person widens, tips with the whole text of a cut cell, and plus and minus
// buttons where the grid has them. It shows a GridSource and hands the user's actions
// to it.
#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <vector>

#include "platform/win32/dialog/GridSource.h"
#include "platform/win32/dialog/TipWindow.h"
#include "platform/win32/dialog/WindowHandles.h"

namespace nv::win {

class GridWindow {
 public:
  // Runs one user action of this grid on the model and lets the dialog follow what it
  // changed.
  using ActionRunner = std::function<void(const GridWindow&, const std::function<void()>&)>;

  static constexpr wchar_t kClassName[] = L"NvGrid";
  static constexpr int kPlusId = 1;
  static constexpr int kMinusId = 2;
  // Messages that read the grid from outside, as a tool reads any control; wParam is
  // MAKEWPARAM(row, column).
  // kGetCellText, from this process only: lParam a CellTextRequest; returns the whole
  // length of the cell's text (-1 outside the grid) and writes as much of it as the
  // buffer holds, with its terminating null.
  // kGetCellTopLeft and kGetCellBottomRight, from any process: the corner in client
  // coordinates as MAKELRESULT(x, y); -1 when the cell is not shown.
  // kGetSize: MAKELRESULT(rows, columns). kGetCurrent: MAKELRESULT(row, column).
  static constexpr UINT kGetCellText = WM_APP + 2;
  static constexpr UINT kGetCellTopLeft = WM_APP + 3;
  static constexpr UINT kGetSize = WM_APP + 4;
  static constexpr UINT kGetCellBottomRight = WM_APP + 5;
  static constexpr UINT kGetCurrent = WM_APP + 7;
  struct CellTextRequest {
    wchar_t* buffer;
    std::size_t capacity;  // in characters, the null included
  };
  // Height of the strip under the cells that holds the plus and minus buttons (96 DPI).
  static constexpr int kButtonStrip = 24;

  GridWindow(GridSource& source, ActionRunner run);
  GridWindow(const GridWindow&) = delete;
  GridWindow& operator=(const GridWindow&) = delete;

  // Creates the window; the class must be registered (RegisterClass below).
  HWND Create(HWND parent, int id, const RECT& bounds, HFONT font);
  HWND Handle() const noexcept { return window_; }
  HWND Editor() const noexcept { return editor_; }
  // Where the whole text of a cut cell shows.
  void SetTip(TipWindow& tip) noexcept { tip_ = &tip; }
  // Told after each scroll, resize or change of a column's width.
  void OnViewChanged(std::function<void()> changed) { viewChanged_ = std::move(changed); }

  // Follows the model: repaints only when what it shows changed.
  void Refresh();
  // Ends an in-cell edit in progress, handing its text to the model.
  void CommitEdit();
  // The cell's rectangle in the grid's client area; empty when it is scrolled out.
  RECT CellRect(std::int32_t row, std::int32_t col) const;
  // The same wherever the cell is, shown or scrolled out (then partly or wholly outside
  // the scrolling area).
  RECT CellBounds(std::int32_t row, std::int32_t col) const;
  // The part of the client area where the scrolling cells show: below the fixed rows,
  // right of the fixed columns, above the buttons.
  RECT ScrollArea() const;
  int RowHeight() const noexcept { return rowHeight_; }

  static WindowClass RegisterClass(HINSTANCE instance);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK EditorProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                          DWORD_PTR data);
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

  // One handler per message.
  LRESULT OnPaint();
  LRESULT OnSize();
  LRESULT OnFocusChange(bool gained);
  LRESULT OnSetCursor(WPARAM wParam, LPARAM lParam);
  LRESULT OnButtonDown(POINT point);
  LRESULT OnButtonUp();
  LRESULT OnDoubleClick(POINT point);
  LRESULT OnMouseMove(POINT point);
  LRESULT OnMouseLeave();
  bool OnKeyDown(WPARAM key);
  LRESULT OnChar(WPARAM character);
  LRESULT OnCommitAndMove(WPARAM key);
  LRESULT OnGetCellText(WPARAM cell, LPARAM request) const;
  LRESULT OnGetCellCorner(UINT message, WPARAM cell) const;
  LRESULT OnCommand(WPARAM wParam, LPARAM lParam);

  // Geometry and painting (GridWindowPaint.cpp).
  void Paint(HDC dc, const RECT& client);
  void PaintCell(HDC dc, std::int32_t row, std::int32_t col, const RECT& cell);
  RECT DataArea() const;
  std::vector<int> ColumnWidths() const;
  int ColumnLeft(const std::vector<int>& widths, std::int32_t col) const;
  bool HitTest(POINT point, std::int32_t& row, std::int32_t& col, bool fixedToo = false) const;
  void UpdateScrollBars();
  void SetScrollBars();
  void EnsureCurrentVisible();
  int TextWidth(const Text& text) const;
  bool Fits(std::int32_t row, std::int32_t col) const;

  // Widening columns (GridColumns.cpp).
  std::int32_t BorderAt(POINT point) const;
  void SetColumnWidth(std::int32_t col, int width);
  void FitColumn(std::int32_t col);

  void Scroll(int bar, WPARAM request);
  void Move(int rows, int cols);
  bool CurrentIsDataCell() const;
  void PressPlusMinus(bool plus);
  void BeginEdit(const wchar_t* first);
  void CancelEdit();
  void LayoutButtons();
  void ViewChanged();
  // The tip: the hovered cell's whole text while the mouse is over a cut one, otherwise
  // the current cell's while the grid has the focus.
  void ShowTip();
  std::u16string Signature() const;

  GridSource& source_;
  ActionRunner run_;
  TipWindow* tip_ = nullptr;
  std::function<void()> viewChanged_;
  HWND window_ = nullptr;
  HWND editor_ = nullptr;
  HWND plus_ = nullptr;
  HWND minus_ = nullptr;
  HFONT font_ = nullptr;
  int rowHeight_ = 20;
  int dpi_ = 96;
  std::int32_t topRow_ = 0;   // first scrollable row shown, counted from the first non-fixed row
  std::int32_t leftCol_ = 0;  // the same for columns
  std::int32_t editRow_ = -1;
  std::int32_t editCol_ = -1;
  std::u16string shown_;
  std::int32_t shownRow_ = -1;
  std::int32_t shownCol_ = -1;
  // The person's widths, in pixels, over the layout's (which stay the starting widths).
  std::map<std::int32_t, int> widths_;
  std::int32_t sizingCol_ = -1;
  int sizingAnchor_ = 0;  // the mouse's x less the column's width when the drag began
  std::int32_t hoverRow_ = -1;
  std::int32_t hoverCol_ = -1;
  bool tracking_ = false;
  bool clicking_ = false;
  bool updatingBars_ = false;
};

}  // namespace nv::win
