#pragma once
// Registry data as bytes: text is UTF-16LE, numbers little-endian, as Windows keeps them.
#include <bit>
#include <cstdint>
#include <vector>

#include "common/Text.h"

namespace nv {

// The text with its terminator.
std::vector<std::uint8_t> BytesFromText(TextView text);

// The text in `size` bytes of UTF-16LE data, less its last `dropUnits` units (the
// terminators); never negative.
Text TextFromBytes(const std::uint8_t* data, std::uint32_t size, std::uint32_t dropUnits);

constexpr std::uint32_t LittleEndian32(std::uint32_t value) {
  if constexpr (std::endian::native == std::endian::little) return value;
  return (value >> 24) | ((value >> 8) & 0xFF00) | ((value << 8) & 0xFF0000) | (value << 24);
}

}  // namespace nv
