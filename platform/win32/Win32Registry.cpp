#include "platform/win32/Win32Registry.h"

#include <windows.h>

#include <algorithm>

namespace nv {
namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

// The longest value name plus its terminator; key names are shorter still.
constexpr DWORD kMaxName = 16384;

// HKEY_CLASSES_ROOT and the other predefined roots: small negative numbers as HKEYs,
// sign-extended on 64-bit; the store has them as their 32-bit values. Either comes in.
bool IsRoot(std::uint64_t value) {
  const auto high = value >> 32, low = value & 0xFFFFFFFFu;
  return (high == 0 || high == 0xFFFFFFFFu) && low >= 0x80000000u && low <= 0x8000000Fu;
}

HKEY ToHkey(RegKey key) {
  if (IsRoot(key)) return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<std::int32_t>(key & 0xFFFFFFFFu)));
  if (key > UINTPTR_MAX) return nullptr;  // no handle of this process: Windows says InvalidHandle
  return reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(key));
}

RegKey FromHkey(HKEY key) {
  const auto value = static_cast<std::uint64_t>(reinterpret_cast<ULONG_PTR>(key));
  return IsRoot(value) ? value & 0xFFFFFFFFu : value;
}

// A zero-terminated copy in `out`; reuses its storage.
const wchar_t* Zero(TextView text, std::wstring& out) {
  out.assign(text.begin(), text.end());
  return out.c_str();
}

RegStatus Status(LSTATUS status) { return static_cast<RegStatus>(status); }

bool IsStringType(std::uint32_t type) { return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ; }

}  // namespace

RegStatus Win32Registry::OpenKey(RegKey parent, TextView subKey, std::uint32_t access, RegKey& result) {
  HKEY key = nullptr;
  const LSTATUS status = ::RegOpenKeyExW(ToHkey(parent), Zero(subKey, subKey_), 0, access, &key);
  result = status == ERROR_SUCCESS ? FromHkey(key) : 0;
  return Status(status);
}

RegStatus Win32Registry::CreateKey(RegKey parent, TextView subKey, std::uint32_t access, RegKey& result) {
  HKEY key = nullptr;
  const LSTATUS status = ::RegCreateKeyExW(ToHkey(parent), Zero(subKey, subKey_), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                           access, nullptr, &key, nullptr);
  result = status == ERROR_SUCCESS ? FromHkey(key) : 0;
  return Status(status);
}

RegStatus Win32Registry::CloseKey(RegKey key) { return Status(::RegCloseKey(ToHkey(key))); }

RegStatus Win32Registry::QueryValue(RegKey key, TextView name, std::uint32_t* type, std::uint8_t* data,
                                    std::uint32_t* size) {
  DWORD kind = 0;
  DWORD bytes = size != nullptr ? *size : 0;
  const LSTATUS status = ::RegQueryValueExW(ToHkey(key), Zero(name, name_), nullptr, type != nullptr ? &kind : nullptr,
                                            data, size != nullptr ? &bytes : nullptr);
  if (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
    if (type != nullptr) *type = kind;
    if (size != nullptr) *size = bytes;
  }
  return Status(status);
}

RegStatus Win32Registry::SetValue(RegKey key, TextView name, std::uint32_t type, const std::uint8_t* data,
                                  std::uint32_t size) {
  // Given string data without a terminator, RegSetValueExW adds one whenever the unit just
  // past the data reads zero, which is past the caller's buffer. A non-zero unit after a
  // copy keeps the value exactly the bytes given, as everywhere else.
  if (data != nullptr && size > 0 && IsStringType(type)) {
    guarded_.assign(data, data + size);
    guarded_.insert(guarded_.end(), {0xFF, 0xFF, 0xFF});
    data = guarded_.data();
  }
  return Status(::RegSetValueExW(ToHkey(key), Zero(name, name_), 0, type, data, size));
}

RegStatus Win32Registry::DeleteValue(RegKey key, TextView name) {
  return Status(::RegDeleteValueW(ToHkey(key), Zero(name, name_)));
}

RegStatus Win32Registry::DeleteTree(RegKey key, TextView subKey) {
  // The key itself is cleared when no sub-key is named at all; named "", it would go too.
  return Status(::RegDeleteTreeW(ToHkey(key), subKey.empty() ? nullptr : Zero(subKey, subKey_)));
}

RegStatus Win32Registry::EnumKey(RegKey key, std::uint32_t index, Text& name) {
  enumName_.resize(kMaxName);
  DWORD length = kMaxName;
  const LSTATUS status =
      ::RegEnumKeyExW(ToHkey(key), index, enumName_.data(), &length, nullptr, nullptr, nullptr, nullptr);
  if (status == ERROR_SUCCESS) name.assign(enumName_.begin(), enumName_.begin() + length);
  return Status(status);
}

RegStatus Win32Registry::EnumValue(RegKey key, std::uint32_t index, Text& name, std::uint32_t& type,
                                   std::vector<std::uint8_t>& data) {
  enumName_.resize(kMaxName);
  data.resize(std::max<std::size_t>(data.capacity(), 256));
  for (;;) {
    DWORD length = kMaxName;
    DWORD kind = 0;
    auto bytes = static_cast<DWORD>(data.size());
    const LSTATUS status =
        ::RegEnumValueW(ToHkey(key), index, enumName_.data(), &length, nullptr, &kind, data.data(), &bytes);
    // Too small a buffer says how much is needed; the value may grow again meanwhile.
    if (status == ERROR_MORE_DATA && bytes > data.size()) {
      data.resize(bytes);
      continue;
    }
    if (status != ERROR_SUCCESS) {
      data.clear();
      return Status(status);
    }
    name.assign(enumName_.begin(), enumName_.begin() + length);
    type = kind;
    data.resize(bytes);
    return RegError::Success;
  }
}

}  // namespace nv
