#include "platform/win32/Win32Registry.h"
#include "tests/support/TestRegistry.h"

namespace nv::test {
namespace {

// Every key the suites write to, under HKEY_LOCAL_MACHINE.
constexpr TextView kTestKeys[] = {u"SOFTWARE\\NOVRA"};

// The real registry, with what the suites write removed before and after each test: a
// test that died half-way leaves nothing behind for the next one.
class MachineRegistry final : public TestRegistryOwner {
 public:
  MachineRegistry() { RemoveTestKeys(); }
  ~MachineRegistry() override { RemoveTestKeys(); }
  Registry& Get() override { return registry_; }

 private:
  void RemoveTestKeys() {
    for (const TextView key : kTestKeys) {
      const RegStatus status = registry_.DeleteTree(RegRoot::LocalMachine, key);
      EXPECT_TRUE(status == RegError::Success || status == RegError::FileNotFound) << "cannot clear the registry: " << status;
    }
  }

  Win32Registry registry_;
};

}  // namespace

std::unique_ptr<TestRegistryOwner> MakeTestRegistry() { return std::make_unique<MachineRegistry>(); }

}  // namespace nv::test
