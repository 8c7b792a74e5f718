#pragma once
// How the stand-in host reads and writes its own values (variables, actions): any text
// type reads as its text without the terminator, a REG_DWORD as its number.
#include <optional>

#include "common/Variant.h"
#include "store/Registry.h"

namespace nv {

std::optional<Variant> ReadStoredValue(Registry& registry, RegKey key, TextView name);
RegStatus WriteStoredText(Registry& registry, RegKey key, TextView name, TextView value);
RegStatus WriteStoredNumber(Registry& registry, RegKey key, TextView name, std::uint32_t value);

}  // namespace nv
