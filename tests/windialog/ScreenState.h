#pragma once
// What a person sees of a dialog, read from any process: controls by identifier, their
// places on the screen, the focus, the tip box, and a picture of the screen around the
// dialog. Reads wait a while for the screen to settle, since real input arrives on its own.
#include "platform/win32/com/WindowsSdk.h"

#include <functional>
#include <string>

namespace nv::uitest {

// True once `holds` is, within a few seconds.
bool Eventually(const std::function<bool()>& holds);

// A visible top-level window of this class that `process` shows; null when there is none.
HWND VisibleWindowOf(DWORD process, const std::wstring& className);

class ScreenState {
 public:
  explicit ScreenState(HWND dialog);

  HWND Dialog() const noexcept { return dialog_; }
  HWND Control(int id) const;
  HWND Focused() const;
  std::wstring Text(HWND window) const;
  std::wstring Text(int id) const { return Text(Control(id)); }
  bool Checked(int id) const;
  RECT ScreenRect(HWND window) const;
  POINT Centre(HWND window) const;
  // A grid cell's rectangle on the screen; empty when it is not shown.
  RECT CellOnScreen(int gridId, int row, int col) const;
  POINT CellCentre(int gridId, int row, int col) const;
  // MAKELRESULT(rows, columns) and MAKELRESULT(row, column) of a grid.
  int GridCols(int gridId) const;
  POINT GridCurrent(int gridId) const;  // x column, y row
  // The tip box shown for the dialog: its text, empty when none shows.
  std::wstring Tip() const;
  // The message box the dialog shows, waited for; null when none came.
  HWND ShownMessageBox() const;

  // The screen around the dialog and its tip, as PNG.
  bool SavePicture(const std::string& path) const;

 private:
  HWND dialog_;
  DWORD thread_;
};

}  // namespace nv::uitest
