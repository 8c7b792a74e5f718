#pragma once
// Values and files in and out of nvhost byte for byte: a file or standard input read whole,
// UTF-8 checked; a value written to a file with nothing added.
#include <string>

#include "common/Text.h"

namespace nv {

// The bytes of PATH, or of standard input for "-". Throws std::runtime_error naming the file.
std::string ReadInputBytes(const std::string& path);

// The bytes as text; throws std::runtime_error for bytes that are not UTF-8,
// naming `source` and the offset of the first bad byte.
Text DecodeUtf8Input(const std::string& bytes, const std::string& source);

// Writes `bytes` to PATH (replaced whole). Throws std::runtime_error naming the file.
void WriteOutputBytes(const std::string& path, const std::string& bytes);

}  // namespace nv
