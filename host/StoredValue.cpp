#include "host/StoredValue.h"

#include <bit>
#include <cstring>
#include <vector>

#include "common/LargeBuffer.h"
#include "store/ValueBytes.h"

namespace nv {

std::optional<Variant> ReadStoredValue(Registry& registry, RegKey key, TextView name) {
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  if (registry.QueryValue(key, name, &type, nullptr, &size) != RegError::Success) return std::nullopt;
  if (type == RegType::Dword && size == 4) {
    std::uint32_t number = 0;
    if (registry.QueryValue(key, name, &type, reinterpret_cast<std::uint8_t*>(&number), &size) != RegError::Success)
      return std::nullopt;
    return Variant::FromLong(static_cast<std::int32_t>(LittleEndian32(number)));
  }
  // A variable may hold many MiB: on a little-endian machine its bytes go from the registry
  // straight into the text's own buffer, with no copy in between.
  Text text;
  std::uint8_t* target = nullptr;
  std::vector<std::uint8_t> bytes;
  if constexpr (std::endian::native == std::endian::little) {
    text.reserve((size + 1) / 2);  // allocated, not yet written
    AdviseLargeBuffer(text.data(), size);
    text.resize((size + 1) / 2);
    target = reinterpret_cast<std::uint8_t*>(text.data());
  } else {
    bytes.resize(size);
    target = bytes.data();
  }
  if (registry.QueryValue(key, name, &type, target, &size) != RegError::Success) return std::nullopt;
  if constexpr (std::endian::native != std::endian::little) text = TextFromBytes(bytes.data(), size, 0);
  text.resize(size / 2);  // a value may have shrunk between the two queries
  if (!text.empty() && text.back() == u'\0') text.pop_back();
  return Variant::FromText(std::move(text));
}

RegStatus WriteStoredText(Registry& registry, RegKey key, TextView name, TextView value) {
  const std::vector<std::uint8_t> data = BytesFromText(value);
  return registry.SetValue(key, name, RegType::Sz, data.data(), static_cast<std::uint32_t>(data.size()));
}

RegStatus WriteStoredNumber(Registry& registry, RegKey key, TextView name, std::uint32_t value) {
  const std::uint32_t data = LittleEndian32(value);
  return registry.SetValue(key, name, RegType::Dword, reinterpret_cast<const std::uint8_t*>(&data), sizeof data);
}

}  // namespace nv
