#pragma once
// Owners for the window-system handles of the dialogs: top-level windows, GDI objects,
// icons and device contexts. Child windows belong to their parent and go with it.
#include <windows.h>

#include "platform/win32/com/UniqueHandle.h"

namespace nv::win {

struct WindowDeleter {
  void operator()(HWND window) const noexcept { DestroyWindow(window); }
};
struct IconDeleter {
  void operator()(HICON icon) const noexcept { DestroyIcon(icon); }
};
struct MemoryDcDeleter {
  void operator()(HDC dc) const noexcept { DeleteDC(dc); }
};

struct KernelHandleDeleter {
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};

using unique_hwnd = com::unique_handle<HWND, WindowDeleter>;
using unique_kernel_handle = com::unique_handle<HANDLE, KernelHandleDeleter>;
using unique_hfont = com::unique_handle<HFONT, com::GdiObjectDeleter>;
using unique_hbrush = com::unique_handle<HBRUSH, com::GdiObjectDeleter>;
using unique_hbitmap = com::unique_handle<HBITMAP, com::GdiObjectDeleter>;
using unique_hicon = com::unique_handle<HICON, IconDeleter>;
using unique_memory_dc = com::unique_handle<HDC, MemoryDcDeleter>;

// A window's device context (of its client area, or of the whole window with its frame),
// released to it at the end of the scope.
class WindowDc {
 public:
  explicit WindowDc(HWND window, bool withFrame = false)
      : window_(window), dc_(withFrame ? GetWindowDC(window) : GetDC(window)) {}
  ~WindowDc() {
    if (dc_) ReleaseDC(window_, dc_);
  }
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  HDC get() const noexcept { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};

// An object selected into a device context until the end of the scope.
class SelectedObject {
 public:
  SelectedObject(HDC dc, HGDIOBJ object) : dc_(dc), previous_(SelectObject(dc, object)) {}
  ~SelectedObject() { SelectObject(dc_, previous_); }
  SelectedObject(const SelectedObject&) = delete;
  SelectedObject& operator=(const SelectedObject&) = delete;

 private:
  HDC dc_;
  HGDIOBJ previous_;
};

// BeginPaint and EndPaint.
class PaintScope {
 public:
  explicit PaintScope(HWND window) : window_(window) { dc_ = BeginPaint(window, &paint_); }
  ~PaintScope() { EndPaint(window_, &paint_); }
  PaintScope(const PaintScope&) = delete;
  PaintScope& operator=(const PaintScope&) = delete;
  HDC get() const noexcept { return dc_; }

 private:
  HWND window_;
  PAINTSTRUCT paint_{};
  HDC dc_ = nullptr;
};

// A class registered for the life of the object: a DLL that is unloaded must not leave a
// class behind whose procedure points into freed code.
class WindowClass {
 public:
  WindowClass(const wchar_t* name, WNDPROC procedure, HINSTANCE instance, HBRUSH background, UINT style = 0);
  ~WindowClass();
  WindowClass(const WindowClass&) = delete;
  WindowClass& operator=(const WindowClass&) = delete;
  const wchar_t* Name() const noexcept { return name_; }

 private:
  const wchar_t* name_;
  HINSTANCE instance_;
  bool registered_ = false;
};

// The module that holds this code: the DLL in a host, the program in a test.
HINSTANCE CodeModule() noexcept;

}  // namespace nv::win
