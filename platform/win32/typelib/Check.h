#pragma once
// The generator's error flow: a failing call ends the run with what failed and its HRESULT.
#include <windows.h>
#include <oleauto.h>

#include <stdexcept>
#include <string>

namespace nv::typelib {

class Failure : public std::runtime_error {
 public:
  Failure(const std::string& what, HRESULT hr) : std::runtime_error(what), hr_(hr) {}
  HRESULT Result() const noexcept { return hr_; }

 private:
  HRESULT hr_;
};

inline void Check(HRESULT hr, const char* what) {
  if (FAILED(hr)) throw Failure(what, hr);
}

// Descriptions handed out by an ITypeInfo go back to it when the holder ends.
class TypeAttrHolder {
 public:
  explicit TypeAttrHolder(ITypeInfo* info) : info_(info) { Check(info->GetTypeAttr(&attr_), "GetTypeAttr"); }
  ~TypeAttrHolder() { info_->ReleaseTypeAttr(attr_); }
  TypeAttrHolder(const TypeAttrHolder&) = delete;
  TypeAttrHolder& operator=(const TypeAttrHolder&) = delete;
  const TYPEATTR* operator->() const { return attr_; }

 private:
  ITypeInfo* info_;
  TYPEATTR* attr_ = nullptr;
};

class FuncDescHolder {
 public:
  FuncDescHolder(ITypeInfo* info, UINT index) : info_(info) { Check(info->GetFuncDesc(index, &desc_), "GetFuncDesc"); }
  ~FuncDescHolder() { info_->ReleaseFuncDesc(desc_); }
  FuncDescHolder(const FuncDescHolder&) = delete;
  FuncDescHolder& operator=(const FuncDescHolder&) = delete;
  const FUNCDESC* operator->() const { return desc_; }
  const FUNCDESC& operator*() const { return *desc_; }

 private:
  ITypeInfo* info_;
  FUNCDESC* desc_ = nullptr;
};

class Bstr {
 public:
  Bstr() = default;
  ~Bstr() { SysFreeString(value_); }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  BSTR* Out() { SysFreeString(value_); value_ = nullptr; return &value_; }
  BSTR Get() const { return value_; }

 private:
  BSTR value_ = nullptr;
};

}  // namespace nv::typelib
