#include "host/ScenarioVariables.h"

#include <memory>
#include <vector>

#include "common/Error.h"
#include "store/RegistryKey.h"
#include "store/ValueBytes.h"

namespace nv {

Text VariablesKeyPath(const Text& scenario) { return u"SOFTWARE\\NOVRA\\Scenarios\\" + scenario + u"\\Variables"; }

std::optional<Variant> ScenarioVariables::Get(const Text& scenario, const Text& name) const {
  const ReadingScope reading(registry_);
  UniqueRegKey key;
  if (OpenUniqueKey(registry_, RegRoot::LocalMachine, VariablesKeyPath(scenario), RegAccess::QueryValue, key) !=
      RegError::Success) {
    return std::nullopt;
  }
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  if (registry_.QueryValue(key.Get(), name, &type, nullptr, &size) != RegError::Success) return std::nullopt;
  // A variable may hold megabytes: the buffer is not cleared before the registry fills it.
  const auto data = std::make_unique_for_overwrite<std::uint8_t[]>(size);
  if (registry_.QueryValue(key.Get(), name, &type, data.get(), &size) != RegError::Success) return std::nullopt;
  if (type == RegType::Dword && size == 4) {
    std::uint32_t number = 0;
    for (int i = 3; i >= 0; --i) number = (number << 8) | data[static_cast<std::size_t>(i)];
    return Variant::FromLong(static_cast<std::int32_t>(number));
  }
  // Text of any kind: the terminator, when there is one, is not part of the value.
  Text text = TextFromBytes(data.get(), size, 0);
  if (!text.empty() && text.back() == u'\0') text.pop_back();
  return Variant::FromText(std::move(text));
}

void ScenarioVariables::Set(const Text& scenario, const Text& name, const Text& value) {
  UniqueRegKey key;
  RegStatus status =
      CreateUniqueKey(registry_, RegRoot::LocalMachine, VariablesKeyPath(scenario), RegAccess::ReadWrite, key);
  if (status == RegError::Success) {
    const std::vector<std::uint8_t> data = BytesFromText(value);
    status = registry_.SetValue(key.Get(), name, RegType::Sz, data.data(), static_cast<std::uint32_t>(data.size()));
  }
  if (status != RegError::Success) {
    RaiseError(status, u"Cannot store the variable " + name + u" of scenario " + scenario + u" (registry error " +
                           DecimalText(status) + u")");
  }
}

}  // namespace nv
