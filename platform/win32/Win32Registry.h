#pragma once
// The registry on Windows: the store's operations straight onto advapi32. Handles are the
// HKEYs themselves; the predefined roots travel as their 32-bit values. Batches and runs
// of reads are the interface's no-ops: the Windows registry has neither to offer here.
#include <cstdint>
#include <string>
#include <vector>

#include "store/Registry.h"

namespace nv {

class Win32Registry final : public Registry {
 public:
  RegStatus OpenKey(RegKey parent, TextView subKey, std::uint32_t access, RegKey& result) override;
  RegStatus CreateKey(RegKey parent, TextView subKey, std::uint32_t access, RegKey& result) override;
  RegStatus CloseKey(RegKey key) override;
  RegStatus QueryValue(RegKey key, TextView name, std::uint32_t* type, std::uint8_t* data,
                       std::uint32_t* size) override;
  RegStatus SetValue(RegKey key, TextView name, std::uint32_t type, const std::uint8_t* data,
                     std::uint32_t size) override;
  RegStatus DeleteValue(RegKey key, TextView name) override;
  RegStatus DeleteTree(RegKey key, TextView subKey) override;
  RegStatus EnumKey(RegKey key, std::uint32_t index, Text& name) override;
  RegStatus EnumValue(RegKey key, std::uint32_t index, Text& name, std::uint32_t& type,
                      std::vector<std::uint8_t>& data) override;

 private:
  // Scratch space reused by every call: the names as zero-terminated wide strings, the
  // longest value name, string data with a guard after it.
  std::wstring name_, subKey_;
  std::wstring enumName_;
  std::vector<std::uint8_t> guarded_;
};

}  // namespace nv
