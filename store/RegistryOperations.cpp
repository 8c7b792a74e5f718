#include "store/RegistryOperations.h"

#include <array>
#include <cstring>
#include <vector>

#include "common/Conversions.h"
#include "store/ModuleState.h"
#include "store/RegistryKey.h"
#include "store/ValueBytes.h"

namespace nv {
namespace {

}  // namespace

Variant ValueAsRead(std::uint32_t type, std::uint32_t size, const std::uint8_t* data) {
  const bool isText = type == RegType::Sz || type == RegType::ExpandSz || type == RegType::MultiSz;
  if (size == 0 || (isText && size > kTextBufferBytes)) return Variant::FromText(u"");
  switch (type) {
    case RegType::Sz: return Variant::FromText(TextFromBytes(data, size, 1));
    case RegType::MultiSz: return Variant::FromText(TextFromBytes(data, size, 2));
    case RegType::Dword: {
      if (size > 4) return Variant::FromText(u"");  // does not fit the number it is read into
      std::uint32_t number = 0;
      std::memcpy(&number, data, size);
      return Variant::FromLong(static_cast<std::int32_t>(LittleEndian32(number)));
    }
    default: return Variant();
  }
}

Text SectionPath(TextView section) {
  Text path = Module().CurrentSubKey;
  path += u'\\';
  path += section;
  return path;
}

Variant ReadRegistryValueFromKey(Registry& registry, RegKey key, TextView valueName) {
  // The reader's two queries (size, then data into the 65,536-byte buffer) give the same
  // answers as one query into a small buffer followed, for a larger text only, by one into
  // a buffer of the exact size: most values then cost a single query.
  std::array<std::uint8_t, 512> small;
  std::vector<std::uint8_t> large;
  std::uint8_t* data = small.data();
  std::uint32_t type = RegType::None;
  std::uint32_t size = static_cast<std::uint32_t>(small.size());
  RegStatus status = registry.QueryValue(key, valueName, &type, data, &size);
  const bool isText = type == RegType::Sz || type == RegType::ExpandSz || type == RegType::MultiSz;
  if (status == RegError::MoreData && isText && size <= kTextBufferBytes) {
    large.resize(size);
    data = large.data();
    status = registry.QueryValue(key, valueName, &type, data, &size);
  }
  if (status == RegError::MoreData && !isText && type != RegType::Dword) {
    return size == 0 ? Variant::FromText(u"") : Variant();  // never queried for its data
  }
  if (status != RegError::Success) return Variant::FromText(u"");
  return ValueAsRead(type, size, data);
}

Variant ReadRegistryValue(TextView section, TextView valueName) {
  Registry& registry = ModuleRegistry();
  const ReadingScope reading(registry);
  // A failed open leaves no handle and the queries below fail, which reads as empty.
  UniqueRegKey key;
  OpenUniqueKey(registry, Module().CurrentRoot, SectionPath(section), RegAccess::QueryValue, key);
  return ReadRegistryValueFromKey(registry, key.Get(), valueName);
}

bool WriteRegistryValue(TextView section, TextView valueName, std::int32_t kind, TextView value) {
  Registry& registry = ModuleRegistry();
  UniqueRegKey key;
  Text path = SectionPath(section);
  path += u'\\';
  RegStatus status = CreateUniqueKey(registry, Module().CurrentRoot, path, RegAccess::ReadWrite, key);
  if (kind == ValueKind::Text || kind == ValueKind::ExpandText) {
    // The empty text is still a REG_SZ: it holds the terminator alone.
    const std::vector<std::uint8_t> data = BytesFromText(value);
    status = registry.SetValue(key.Get(), valueName, RegType::Sz, data.data(), static_cast<std::uint32_t>(data.size()));
  } else if (kind == ValueKind::Number) {
    const auto number = LittleEndian32(static_cast<std::uint32_t>(ToLong(value)));
    status = registry.SetValue(key.Get(), valueName, RegType::Dword, reinterpret_cast<const std::uint8_t*>(&number),
                               sizeof number);
  }
  return status == RegError::Success;
}

bool DeleteRegistryValue(TextView section, TextView valueName) {
  Registry& registry = ModuleRegistry();
  UniqueRegKey key;
  OpenUniqueKey(registry, Module().CurrentRoot, SectionPath(section), RegAccess::ReadWrite, key);
  return registry.DeleteValue(key.Get(), valueName) == RegError::Success;
}

bool OpenRegistryKey(TextView section, std::uint32_t access, RegKey& key) {
  return ModuleRegistry().OpenKey(Module().CurrentRoot, SectionPath(section), access, key) == RegError::Success;
}

void CloseRegistryKey(RegKey key) { ModuleRegistry().CloseKey(key); }

bool RegistryKeyExists(TextView section) {
  RegKey key = 0;
  if (!OpenRegistryKey(section, RegAccess::EnumerateSubKeys, key)) return false;
  CloseRegistryKey(key);
  return true;
}

}  // namespace nv
