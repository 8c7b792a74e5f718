#pragma once
// A fresh registry for one test, installed as the module's registry: a temporary hive
// natively. The module state is reset around each test.
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "common/Text.h"
#include "store/Registry.h"

namespace nv::test {

// Owns a registry made for tests and removes what it made when it goes.
class TestRegistryOwner {
 public:
  virtual ~TestRegistryOwner() = default;
  virtual Registry& Get() = 0;
};

std::unique_ptr<TestRegistryOwner> MakeTestRegistry();

struct RawValue {
  std::uint32_t type = 0;
  std::vector<std::uint8_t> data;
};

// Direct access under HKEY_LOCAL_MACHINE, around the store, to arrange and inspect.
void PutRaw(Registry& registry, const Text& path, const Text& name, std::uint32_t type, std::vector<std::uint8_t> data);
void PutText(Registry& registry, const Text& path, const Text& name, const Text& value);
void PutDword(Registry& registry, const Text& path, const Text& name, std::uint32_t value);
std::optional<RawValue> GetRaw(Registry& registry, const Text& path, const Text& name);
std::vector<Text> ValueNames(Registry& registry, const Text& path);

class RegistryTest : public ::testing::Test {
 public:
  void SetUp() override;
  void TearDown() override;

  Registry& Reg() { return registry_->Get(); }

 private:
  std::unique_ptr<TestRegistryOwner> registry_;
};

// The same, with the module's registry context on the tasks of scenario S (task T).
class TaskContextTest : public RegistryTest {
 public:
  void SetUp() override;

  const Text kTasks = u"SOFTWARE\\NOVRA\\Scenarios\\S\\Taches";
  const Text kTask = kTasks + u"\\T";
};

}  // namespace nv::test
