#pragma once
// The value lines of a registry file: "name"=data and @=data.
#include <cstdint>
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
};

// Reads a value line at the cursor (which may move on to continuation lines) up to the end
// of its last line. Throws RegFileError naming the line of the fault.
RegValueLine ReadValueLine(RegLineCursor& cursor, RegFileFormat format);

// A quoted string at the cursor, with its \\ and \" escapes undone.
Text ReadQuoted(RegLineCursor& cursor);

}  // namespace nv
