#pragma once
// How the stand-in host reads and writes its own values (variables, actions): any text
// type reads as its text without the terminator, a REG_DWORD as its number.
#include <optional>

#include "common/Variant.h"
#include "engine/PieceCut.h"
#include "store/Registry.h"

namespace nv {

// A text value goes through `scanner`, when given, piece by piece as it is read.
std::optional<Variant> ReadStoredValue(Registry& registry, RegKey key, TextView name, PieceScanner* scanner = nullptr);
RegStatus WriteStoredText(Registry& registry, RegKey key, TextView name, TextView value);
RegStatus WriteStoredNumber(Registry& registry, RegKey key, TextView name, std::uint32_t value);

}  // namespace nv
