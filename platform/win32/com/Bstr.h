#pragma once
// BSTR ownership and the conversions between the host's strings and the system's text.
// Both are UTF-16 code units, so nothing is translated, only copied.
#include <windows.h>
#include <oleauto.h>

#include <utility>

#include "common/Text.h"

namespace nv::com {

class UniqueBstr {
 public:
  UniqueBstr() = default;
  explicit UniqueBstr(BSTR value) : value_(value) {}
  ~UniqueBstr() { SysFreeString(value_); }
  UniqueBstr(UniqueBstr&& other) noexcept : value_(other.release()) {}
  UniqueBstr& operator=(UniqueBstr&& other) noexcept {
    if (this != &other) reset(other.release());
    return *this;
  }
  UniqueBstr(const UniqueBstr&) = delete;
  UniqueBstr& operator=(const UniqueBstr&) = delete;

  BSTR get() const noexcept { return value_; }
  BSTR* put() noexcept {
    reset();
    return &value_;
  }
  BSTR release() noexcept { return std::exchange(value_, nullptr); }
  void reset(BSTR value = nullptr) noexcept {
    SysFreeString(value_);
    value_ = value;
  }

 private:
  BSTR value_ = nullptr;
};

// A new BSTR holding the text; out of memory is raised as std::bad_alloc.
UniqueBstr MakeBstr(TextView text);

// The text of a BSTR; the null BSTR is the empty text.
Text TextOf(BSTR value);

}  // namespace nv::com
