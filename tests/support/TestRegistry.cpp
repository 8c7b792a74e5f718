#include "tests/support/TestRegistry.h"

#include "store/ModuleState.h"
#include "store/RegistryKey.h"
#include "store/ValueBytes.h"

namespace nv::test {

void PutRaw(Registry& registry, const Text& path, const Text& name, std::uint32_t type, std::vector<std::uint8_t> data) {
  UniqueRegKey key;
  ASSERT_EQ(CreateUniqueKey(registry, RegRoot::LocalMachine, path, RegAccess::AllAccess, key), RegError::Success);
  ASSERT_EQ(registry.SetValue(key.Get(), name, type, data.data(), static_cast<std::uint32_t>(data.size())),
            RegError::Success);
}

void PutText(Registry& registry, const Text& path, const Text& name, const Text& value) {
  PutRaw(registry, path, name, RegType::Sz, BytesFromText(value));
}

void PutDword(Registry& registry, const Text& path, const Text& name, std::uint32_t value) {
  PutRaw(registry, path, name, RegType::Dword,
         {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value >> 16),
          static_cast<std::uint8_t>(value >> 24)});
}

std::optional<RawValue> GetRaw(Registry& registry, const Text& path, const Text& name) {
  UniqueRegKey key;
  if (OpenUniqueKey(registry, RegRoot::LocalMachine, path, RegAccess::Read, key) != RegError::Success) return std::nullopt;
  RawValue value;
  std::uint32_t size = 0;
  if (registry.QueryValue(key.Get(), name, &value.type, nullptr, &size) != RegError::Success) return std::nullopt;
  value.data.resize(size);
  if (registry.QueryValue(key.Get(), name, &value.type, value.data.data(), &size) != RegError::Success) {
    return std::nullopt;
  }
  return value;
}

std::vector<Text> ValueNames(Registry& registry, const Text& path) {
  std::vector<Text> names;
  UniqueRegKey key;
  if (OpenUniqueKey(registry, RegRoot::LocalMachine, path, RegAccess::Read, key) != RegError::Success) return names;
  Text name;
  std::uint32_t type = 0;
  std::vector<std::uint8_t> data;
  for (std::uint32_t i = 0; registry.EnumValue(key.Get(), i, name, type, data) == RegError::Success; ++i) {
    names.push_back(name);
  }
  return names;
}

void RegistryTest::SetUp() {
  registry_ = MakeTestRegistry();
  Module() = ModuleState{};
  Module().PlatformRegistry = &registry_->Get();
}

void TaskContextTest::SetUp() {
  RegistryTest::SetUp();
  SetRegistryContext(static_cast<std::int32_t>(RegRoot::LocalMachine), kTasks);
}

void RegistryTest::TearDown() {
  Module() = ModuleState{};
  registry_.reset();
}

}  // namespace nv::test
