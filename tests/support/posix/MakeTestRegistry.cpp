#include <atomic>
#include <filesystem>
#include <string>

#include <unistd.h>

#include "platform/posix/SqliteHive.h"
#include "tests/support/TestRegistry.h"

namespace nv::test {
namespace {

class TemporaryHive final : public TestRegistryOwner {
 public:
  explicit TemporaryHive(std::filesystem::path path) : path_(std::move(path)), hive_(SqliteHive::Open(path_.string())) {}
  ~TemporaryHive() override {
    hive_.reset();
    std::error_code ignored;
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(path_.string() + suffix, ignored);
  }
  Registry& Get() override { return *hive_; }

 private:
  std::filesystem::path path_;
  std::unique_ptr<SqliteHive> hive_;
};

}  // namespace

std::unique_ptr<TestRegistryOwner> MakeTestRegistry() {
  static std::atomic<int> counter{0};
  const auto path = std::filesystem::temp_directory_path() /
                    ("nvextch-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++) + ".db");
  return std::make_unique<TemporaryHive>(path);
}

}  // namespace nv::test
