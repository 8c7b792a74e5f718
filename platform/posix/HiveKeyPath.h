#pragma once
// Sub-key paths and names as the hive compares them.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "common/Text.h"
#include "store/Registry.h"

namespace nv {

constexpr std::size_t kMaxKeyNameLength = RegLimit::KeyNameLength;

// HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS, HKEY_CURRENT_CONFIG.
bool IsPredefinedRoot(RegKey key) noexcept;

// Splits a backslash-separated path into key names. Trailing backslashes name the same key;
// a leading backslash or an empty name between two backslashes is BadPathName, a name longer
// than 255 units InvalidParameter. An empty path gives no names.
RegStatus SplitKeyPath(TextView path, std::vector<TextView>& names);

// Whether a name holds CR or LF: the hive makes no such name, which no .reg file could carry.
bool HasLineBreak(TextView name) noexcept;

// The upper-cased name as big-endian UTF-16 bytes: equal for names that differ only in case,
// and ordered as their upper-cased units are, which is the order of sub-key enumeration.
void FoldName(TextView name, std::vector<std::uint8_t>& folded);

}  // namespace nv
