#include "host/StoredValue.h"

#include <cstring>
#include <memory>
#include <vector>

#include "store/ValueBytes.h"

namespace nv {

std::optional<Variant> ReadStoredValue(Registry& registry, RegKey key, TextView name) {
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  if (registry.QueryValue(key, name, &type, nullptr, &size) != RegError::Success) return std::nullopt;
  // A variable may hold megabytes: the buffer is not cleared before the registry fills it.
  const auto data = std::make_unique_for_overwrite<std::uint8_t[]>(size);
  if (registry.QueryValue(key, name, &type, data.get(), &size) != RegError::Success) return std::nullopt;
  if (type == RegType::Dword && size == 4) {
    std::uint32_t number = 0;
    std::memcpy(&number, data.get(), 4);
    return Variant::FromLong(static_cast<std::int32_t>(LittleEndian32(number)));
  }
  Text text = TextFromBytes(data.get(), size, 0);
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
