#pragma once
// Registry files as regedit reads and writes them: "Windows Registry Editor Version 5.00"
// (UTF-16LE with a byte-order mark, or UTF-8) and "REGEDIT4" (ANSI). A file is parsed whole
// before anything is applied, and applied as one batch.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "common/Text.h"
#include "store/Registry.h"

namespace nv {

struct RegKeyPath {
  RegKey root = 0;
  Text subKey;  // no leading or trailing backslash; empty for the root itself

  bool operator==(const RegKeyPath&) const = default;
};

// "HKEY_LOCAL_MACHINE\SOFTWARE\X" (any of the five roots, in any case, or the short forms
// HKLM, HKCU, HKCR, HKU, HKCC). Trailing backslashes are dropped. Nothing for an unknown
// root, an empty name between backslashes or a name longer than 255 units.
std::optional<RegKeyPath> ParseKeyPath(TextView text);

// The long form regedit writes: "HKEY_LOCAL_MACHINE\SOFTWARE\X".
Text KeyPathText(RegKey root, TextView subKey);

// A file that cannot be read, or a step of it that cannot be applied; Line() is 1-based.
class RegFileError : public std::runtime_error {
 public:
  RegFileError(std::size_t line, const std::string& reason);
  std::size_t Line() const noexcept { return line_; }

 private:
  std::size_t line_;
};

struct RegFileOperation {
  enum class Kind { CreateKey, DeleteKey, SetValue, DeleteValue };

  Kind kind = Kind::CreateKey;
  RegKeyPath key;
  Text name;  // the value's name; empty for the default value ("@")
  std::uint32_t type = RegType::None;
  std::vector<std::uint8_t> data;  // as stored: REG_SZ text is UTF-16LE with its terminator
  std::size_t line = 0;

  bool operator==(const RegFileOperation&) const = default;
};

// Throws RegFileError with the line of the first fault.
std::vector<RegFileOperation> ParseRegFile(std::string_view fileBytes);

// Applies everything or nothing (where the registry can promise it): one batch, abandoned
// when a step fails, which throws RegFileError naming the step's line.
void ApplyRegFile(Registry& registry, const std::vector<RegFileOperation>& operations);

// The key and every key below it, depth-first in enumeration order, as regedit writes them
// (CRLF lines). `utf16` gives UTF-16LE with a byte-order mark, as regedit's files; otherwise
// UTF-8. Throws std::runtime_error when the key cannot be read or a name cannot be written.
std::string ExportRegKey(Registry& registry, const RegKeyPath& key, bool utf16);

}  // namespace nv
