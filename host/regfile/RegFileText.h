#pragma once
// From a registry file's bytes to its lines of text, and the byte forms of registry text.
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "common/Text.h"

namespace nv {

enum class RegFileFormat { Version5, Regedit4 };

struct RegFileText {
  RegFileFormat format = RegFileFormat::Version5;
  std::vector<Text> lines;  // line ends removed; lines[0] is the header
};

// Finds the encoding (UTF-16LE with a byte-order mark, UTF-8 with or without one, and for
// REGEDIT4 also Windows-1252) and checks the header. Throws RegFileError.
RegFileText DecodeRegFile(std::string_view bytes);

// Text as the registry stores it: UTF-16LE, with a terminating zero when asked.
std::vector<std::uint8_t> Utf16Bytes(TextView text, bool terminated);

// REGEDIT4 holds the text of hex(1), hex(2) and hex(7) data as ANSI bytes: UTF-8 when they
// are well-formed UTF-8, Windows-1252 otherwise. Zeros stay zeros.
std::vector<std::uint8_t> AnsiToUtf16Bytes(std::span<const std::uint8_t> ansi);

}  // namespace nv
