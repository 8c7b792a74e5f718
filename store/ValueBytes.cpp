#include "store/ValueBytes.h"

#include <cstring>

namespace nv {

// Windows and every machine we build for keep UTF-16 little-endian in memory: there the
// bytes are the text's own and a copy does.
std::vector<std::uint8_t> BytesFromText(TextView text) {
  std::vector<std::uint8_t> bytes((text.size() + 1) * 2);
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(bytes.data(), text.data(), text.size() * 2);
  } else {
    for (std::size_t i = 0; i < text.size(); ++i) {
      bytes[2 * i] = static_cast<std::uint8_t>(text[i] & 0xFF);
      bytes[2 * i + 1] = static_cast<std::uint8_t>(text[i] >> 8);
    }
  }
  bytes[bytes.size() - 2] = 0;
  bytes[bytes.size() - 1] = 0;
  return bytes;
}

Text TextFromBytes(const std::uint8_t* data, std::uint32_t size, std::uint32_t dropUnits) {
  const std::uint32_t units = size / 2;
  const std::uint32_t kept = units > dropUnits ? units - dropUnits : 0;
  Text text(kept, u'\0');
  if constexpr (std::endian::native == std::endian::little) {
    if (kept > 0) std::memcpy(text.data(), data, kept * 2);
  } else {
    for (std::uint32_t i = 0; i < kept; ++i) {
      text[i] = static_cast<char16_t>(data[2 * i] | (data[2 * i + 1] << 8));
    }
  }
  return text;
}

}  // namespace nv
