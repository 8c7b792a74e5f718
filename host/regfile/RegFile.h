#pragma once
// Registry files as regedit reads and writes them: "Windows Registry Editor Version 5.00"
// (UTF-16LE with a byte-order mark, or UTF-8) and "REGEDIT4" (ANSI). A file is read a line at
// a time; an import reads it through once to check it, then again to apply it as one batch,
// so that a fault anywhere applies nothing and the whole file is never held in memory.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "common/Text.h"
#include "host/regfile/RegFileText.h"
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
  // While a file is read: a "text" value's text, with `data` empty (a long text is not
  // copied into bytes). ParseRegFile gives it as `data`.
  std::optional<Text> text;

  bool operator==(const RegFileOperation&) const = default;
};

// Reads the file from `source`, handing each operation to `sink` as soon as it is read.
// Throws RegFileError with the line of the first fault (names the registry cannot hold
// included).
void ReadRegFile(RegByteSource& source, const std::function<void(RegFileOperation&)>& sink);

// The operations of a file in memory. Throws RegFileError with the line of the first fault.
std::vector<RegFileOperation> ParseRegFile(std::string_view fileBytes);

// Applies everything or nothing (where the registry can promise it): one batch, abandoned
// when a step fails, which throws RegFileError naming the step's line.
void ApplyRegFile(Registry& registry, const std::vector<RegFileOperation>& operations);

// A file from a source that `openSource` opens afresh for each reading: checked whole first,
// then applied as ApplyRegFile does, holding one operation at a time.
void ImportRegFile(Registry& registry, const std::function<std::unique_ptr<RegByteSource>()>& openSource);

// The key and every key below it, depth-first in enumeration order, as regedit writes them
// (CRLF lines). `utf16` gives UTF-16LE with a byte-order mark, as regedit's files; otherwise
// UTF-8. What a .reg file cannot carry (a name with a line break, keys deeper than the
// registry allows) and what cannot be read is left out and listed in `leftOut`, one line each;
// everything else is written. Throws std::runtime_error when the key itself cannot be read.
std::string ExportRegKey(Registry& registry, const RegKeyPath& key, bool utf16, std::vector<std::string>& leftOut);
// The same given to `write` in whole lines as they are made, so that a key holding a log of
// many MiB is never written out in memory first. Nothing is written before the key is found
// to be readable.
void ExportRegKey(Registry& registry, const RegKeyPath& key, bool utf16, std::vector<std::string>& leftOut,
                  const std::function<void(std::string_view bytes)>& write);

}  // namespace nv
