#pragma once
// One owner for one Win32 handle, closed by its deleter, in the manner of WIL's
// unique_any: movable, not copyable, release() hands the handle on.
#include <windows.h>

#include <utility>

namespace nv::com {

template <typename T, typename Deleter, T Invalid = T{}>
class unique_handle {
 public:
  unique_handle() = default;
  explicit unique_handle(T handle) : handle_(handle) {}
  ~unique_handle() { reset(); }
  unique_handle(unique_handle&& other) noexcept : handle_(other.release()) {}
  unique_handle& operator=(unique_handle&& other) noexcept {
    if (this != &other) reset(other.release());
    return *this;
  }
  unique_handle(const unique_handle&) = delete;
  unique_handle& operator=(const unique_handle&) = delete;

  T get() const noexcept { return handle_; }
  explicit operator bool() const noexcept { return handle_ != Invalid; }
  T* put() noexcept {
    reset();
    return &handle_;
  }
  T release() noexcept { return std::exchange(handle_, Invalid); }
  void reset(T handle = Invalid) noexcept {
    if (handle_ != Invalid) Deleter{}(handle_);
    handle_ = handle;
  }

 private:
  T handle_ = Invalid;
};

struct RegKeyDeleter {
  void operator()(HKEY key) const noexcept { RegCloseKey(key); }
};
struct GdiObjectDeleter {
  void operator()(HGDIOBJ object) const noexcept { DeleteObject(object); }
};

using unique_hkey = unique_handle<HKEY, RegKeyDeleter>;
using unique_hbitmap = unique_handle<HBITMAP, GdiObjectDeleter>;

}  // namespace nv::com
