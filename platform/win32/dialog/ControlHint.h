#pragma once
// What the standard controls do not show by themselves: words for what a control does,
// in the tip box while the mouse is over it or it has the keyboard focus, and a focus
// frame on a control that draws none (an up-down, a check box without a caption).
#include <windows.h>

#include <string>

#include "platform/win32/dialog/TipWindow.h"

namespace nv::win {

class ControlHint {
 public:
  // `words` empty: the frame alone. The hint must outlive the control's window.
  ControlHint(HWND control, TipWindow& tip, std::wstring words);
  ControlHint(const ControlHint&) = delete;
  ControlHint& operator=(const ControlHint&) = delete;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data);
  void ShowWords();

  HWND control_;
  TipWindow& tip_;
  std::wstring words_;
  bool tracking_ = false;
};

}  // namespace nv::win
