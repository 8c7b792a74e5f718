#pragma once
// The names the registry can hold, checked where names come in (the command line, .reg
// files), so that a name the registry or a .reg file cannot carry is refused before anything
// is written.
#include <string>

#include "common/Text.h"

namespace nv {

// Why `subKey` (backslash-separated names below a root key) with, when not empty, the value
// name `valueName` cannot be written; empty when both can. Refused: a line break (CR or LF)
// in any name, an empty key name, a key name over 255 characters, more than 512 levels, a
// value name over 16,383 characters.
std::string RegistryNameFault(TextView subKey, TextView valueName = {});

// The same as a std::runtime_error, for commands that refuse such input before writing.
void RequireRegistryNames(TextView subKey, TextView valueName = {});

}  // namespace nv
