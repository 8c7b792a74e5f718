#pragma once
// What the suite checks and keeps of a dialog on screen, run on the dialog's own thread:
// a picture of the window as PNG, and the layout rules a well-made dialog keeps.
#include "platform/win32/com/WindowsSdk.h"

#include <string>
#include <vector>

namespace nv::uitest {

// The folder of the pictures, beside the suite (made when missing).
std::string PicturesFolder();

// The window as it is painted now, frame included.
bool SaveWindowPicture(HWND window, const std::string& path);
// The screen's `area` as shown now, whatever windows lie there.
bool SaveScreenPicture(const RECT& area, const std::string& path);

// Broken rules, one line each: a visible control outside its parent's client area, two
// sibling controls that overlap (a frame around its contents, the pages over the tab
// control and `overlayId` over a grid excepted), a caption wider or taller than its
// control, a list entry wider than its list, and a dialog larger than 800 by 600.
std::vector<std::string> LayoutProblems(HWND dialog, HWND page, int overlayId);

}  // namespace nv::uitest
