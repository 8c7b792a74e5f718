// nvhost natively: the SQLite hive, and the plug-in linked in and called directly.
#include "host/nvhost/Commands.h"
#include "host/nvhost/HostPlatform.h"
#include "platform/posix/SqliteHive.h"
#include "plugin/ExtractionChaine.h"

namespace nv {
namespace {

class LinkedPlugin final : public PluginClient {
 public:
  void InitializeProperties(const Text& name, const Text& scenario, std::int32_t language) override {
    plugin_.InitializeProperties(name, scenario, language);
  }
  void SetReportFilePath(const Text& path) override { plugin_.SetReportFilePath(path); }
  void SetWorkingMode(std::int32_t mode) override { plugin_.SetWorkingMode(mode); }
  void ExecuteTache() override { plugin_.ExecuteTache(); }
  std::int32_t GetStatus() override { return plugin_.GetStatus(); }
  Text GetTaskDescription() override { return plugin_.GetTaskDescription(); }
  Text GetActions() override { return plugin_.GetActions(); }
  std::int32_t ShowWrapper() override { return plugin_.ShowWrapper(); }

 private:
  ExtractionChaine plugin_;
};

class NativePlatform final : public HostPlatform {
 public:
  std::unique_ptr<Registry> OpenRegistry(const std::string& hivePath) override { return SqliteHive::Open(hivePath); }
  std::string ReadOnlyReason(Registry& registry) const override {
    return static_cast<SqliteHive&>(registry).ReadOnlyReason();
  }
  std::uint64_t LargestValueBytes() const override { return SqliteHive::LargestValueBytes(); }
  std::unique_ptr<PluginClient> CreatePlugin() override { return std::make_unique<LinkedPlugin>(); }
  bool ShowsWindows() const override { return false; }
  bool UsesHiveFile() const override { return true; }
  const std::vector<Command>& OwnCommands() const override { return HiveFileCommands(); }
};

}  // namespace

std::unique_ptr<HostPlatform> MakeHostPlatform() { return std::make_unique<NativePlatform>(); }

std::vector<std::string> CommandLineWords(int argc, char** argv) { return {argv + 1, argv + argc}; }

}  // namespace nv
