#pragma once
// A VARIANT that clears itself: whatever it holds (a BSTR, an interface) is released.
#include <windows.h>
#include <oleauto.h>

namespace nv::com {

class UniqueVariant {
 public:
  UniqueVariant() { VariantInit(&value_); }
  ~UniqueVariant() { VariantClear(&value_); }
  // Moving hands over the value as it is, without copying what it holds.
  UniqueVariant(UniqueVariant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
  UniqueVariant& operator=(UniqueVariant&& other) noexcept {
    if (this != &other) {
      VariantClear(&value_);
      value_ = other.value_;
      VariantInit(&other.value_);
    }
    return *this;
  }
  UniqueVariant(const UniqueVariant&) = delete;
  UniqueVariant& operator=(const UniqueVariant&) = delete;

  VARIANT* get() noexcept { return &value_; }
  const VARIANT* get() const noexcept { return &value_; }
  VARIANT* operator->() noexcept { return &value_; }
  const VARIANT* operator->() const noexcept { return &value_; }
  // Hands the value to an [out] VARIANT that holds nothing of its own yet; this one is
  // left empty.
  void MoveTo(VARIANT* out) noexcept {
    *out = value_;
    VariantInit(&value_);
  }
  // Cleared first, for an [out] VARIANT.
  VARIANT* put() noexcept {
    VariantClear(&value_);
    return &value_;
  }

 private:
  VARIANT value_;
};

}  // namespace nv::com
