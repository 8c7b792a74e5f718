#pragma once
// The registry operations of the store, relative to the module's CurrentRoot and
// CurrentSubKey. Registry failures are absorbed (empty reads, false results); conversion
// failures are raised.
#include <cstdint>

#include "common/Text.h"
#include "common/Variant.h"
#include "store/Registry.h"

namespace nv {

namespace ValueKind {
constexpr std::int32_t Text = 1;
constexpr std::int32_t ExpandText = 2;  // written as plain text all the same
constexpr std::int32_t Number = 4;
}  // namespace ValueKind

// Text, a number, or empty: the empty text for anything missing, unreadable or too large
// for the 65,536-byte buffer; Empty for REG_EXPAND_SZ, binary and other types.
Variant ReadRegistryValue(TextView section, TextView valueName);

// The same rules on a key that the caller holds open (a loader reading many values).
Variant ReadRegistryValueFromKey(Registry& registry, RegKey key, TextView valueName);

// The reader's buffer is 65,536 ANSI bytes. Our code page is single-byte, so that is the
// same number of UTF-16 units: a text of 65,535 characters and its terminator fit, one
// more does not.
constexpr std::uint32_t kTextBufferBytes = 65536 * sizeof(char16_t);

// What those rules make of a value that exists, from its type and size and, for a size of
// at most kTextBufferBytes, its data.
Variant ValueAsRead(std::uint32_t type, std::uint32_t size, const std::uint8_t* data);

bool WriteRegistryValue(TextView section, TextView valueName, std::int32_t kind, TextView value);
bool DeleteRegistryValue(TextView section, TextView valueName);
bool RegistryKeyExists(TextView section);
bool OpenRegistryKey(TextView section, std::uint32_t access, RegKey& key);
void CloseRegistryKey(RegKey key);

// CurrentSubKey + "\" + section.
Text SectionPath(TextView section);

}  // namespace nv
