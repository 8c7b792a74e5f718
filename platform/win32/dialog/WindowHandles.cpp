#include "platform/win32/dialog/WindowHandles.h"

namespace nv::win {

WindowClass::WindowClass(const wchar_t* name, WNDPROC procedure, HINSTANCE instance, HBRUSH background, UINT style)
    : name_(name), instance_(instance) {
  WNDCLASSEXW existing{};
  existing.cbSize = sizeof(existing);
  // A dialog opened from inside another (a nested use) finds its class already there.
  if (GetClassInfoExW(instance, name, &existing)) return;
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof(windowClass);
  windowClass.style = style;
  windowClass.lpfnWndProc = procedure;
  windowClass.hInstance = instance;
  windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  windowClass.hbrBackground = background;
  windowClass.lpszClassName = name;
  registered_ = RegisterClassExW(&windowClass) != 0;
}

WindowClass::~WindowClass() {
  if (registered_) UnregisterClassW(name_, instance_);
}

HINSTANCE CodeModule() noexcept {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&CodeModule), &module);
  return module;
}

}  // namespace nv::win
