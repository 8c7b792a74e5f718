#pragma once
// The value lines of a registry file: "name"=data and @=data.
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "common/Text.h"
#include "host/regfile/RegFileText.h"
#include "host/regfile/RegLineCursor.h"

namespace nv {

struct RegValueLine {
  Text name;
  bool deletion = false;  // "name"=-
  std::uint32_t type = 0;
  std::vector<std::uint8_t> data;
  std::optional<Text> text;  // "name"="text": the REG_SZ's text, and `data` is empty
};

// Reads a value line at the cursor (which may move on to continuation lines) up to the end
// of its last line; a "text" value takes the line's own room for its text (the line is then
// empty). Throws RegFileError naming the line of the fault.
RegValueLine ReadValueLine(RegLineCursor& cursor, RegFileFormat format);

// A quoted string at the cursor, with its \\ and \" escapes undone.
Text ReadQuoted(RegLineCursor& cursor);

// The same, handing each unit to `put` (never more units than it reads).
void ReadQuotedUnits(RegLineCursor& cursor, const std::function<void(char16_t)>& put);

}  // namespace nv
