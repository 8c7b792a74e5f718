#pragma once
// A grid window of our own for the editors' grids and the actions grid: fixed rows and
// columns, the current cell, alignments and cell colours, in-cell editing, scrolling, and
// plus and minus buttons where the grid has them. It shows a GridSource and hands the
// user's actions to it.
#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "platform/win32/dialog/GridSource.h"
#include "platform/win32/dialog/WindowHandles.h"

namespace nv::win {

class GridWindow {
 public:
  // Runs one user action on the model and lets the dialog follow what it changed.
  using ActionRunner = std::function<void(const std::function<void()>&)>;

  static constexpr wchar_t kClassName[] = L"NvGrid";
  static constexpr int kPlusId = 1;
  static constexpr int kMinusId = 2;
  // Messages that read the grid from outside, as a tool reads any control: wParam is
  // MAKEWPARAM(row, column). kGetCellText: lParam a wchar_t[kCellTextMax] buffer, returns
  // the length (-1 outside the grid). kGetCellRect: lParam a RECT in client coordinates,
  // returns FALSE when the cell is not shown. kGetSize: MAKELRESULT(rows, columns).
  static constexpr UINT kGetCellText = WM_APP + 2;
  static constexpr UINT kGetCellRect = WM_APP + 3;
  static constexpr UINT kGetSize = WM_APP + 4;
  static constexpr std::size_t kCellTextMax = 1024;
  // Height of the strip under the cells that holds the plus and minus buttons (96 DPI).
  static constexpr int kButtonStrip = 24;

  GridWindow(GridSource& source, ActionRunner run);
  GridWindow(const GridWindow&) = delete;
  GridWindow& operator=(const GridWindow&) = delete;

  // Creates the window; the class must be registered (RegisterClass below).
  HWND Create(HWND parent, int id, const RECT& bounds, HFONT font);
  HWND Handle() const noexcept { return window_; }
  HWND Editor() const noexcept { return editor_; }

  // Follows the model: repaints only when what it shows changed.
  void Refresh();
  // Ends an in-cell edit in progress, handing its text to the model.
  void CommitEdit();
  // The cell's rectangle in the grid's client area; empty when it is scrolled out.
  RECT CellRect(std::int32_t row, std::int32_t col) const;
  int RowHeight() const noexcept { return rowHeight_; }

  static WindowClass RegisterClass(HINSTANCE instance);

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK EditorProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                          DWORD_PTR data);
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

  void Paint(HDC dc, const RECT& client);
  void PaintCell(HDC dc, std::int32_t row, std::int32_t col, const RECT& cell);
  RECT DataArea() const;
  std::vector<int> ColumnWidths() const;
  bool HitTest(POINT point, std::int32_t& row, std::int32_t& col) const;
  void UpdateScrollBars();
  void EnsureCurrentVisible();
  void Scroll(int bar, WPARAM request);
  void Move(int rows, int cols);
  void BeginEdit(const wchar_t* first);
  void CancelEdit();
  void LayoutButtons();
  std::u16string Signature() const;

  GridSource& source_;
  ActionRunner run_;
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
};

}  // namespace nv::win
