#include "host/nvhost/Session.h"

#include <filesystem>
#include <ostream>

#include "host/nvhost/ExitCodes.h"
#include "host/nvhost/TaskLookup.h"

#include "store/ModuleState.h"

namespace nv {

Session::Session(HostPlatform& platform, std::string hivePath, std::ostream& out, std::ostream& err)
    : platform_(platform), hivePath_(std::move(hivePath)), out_(out), err_(err), prompt_(out) {}

Session::~Session() {
  Module().ReportWriterInstance.reset();
  Module().PlatformRegistry = nullptr;
  Module().PlatformServices = nullptr;
}

Registry& Session::OpenRegistry() {
  if (!registry_) {
    registry_ = platform_.OpenRegistry(hivePath_);
    // With no report file, report lines go to standard error.
    services_ = std::make_unique<NativeHostServices>(*registry_, prompt_,
                                                     [this](const std::string& line) { err_ << line << std::flush; });
    Module().PlatformRegistry = registry_.get();
    Module().PlatformServices = services_.get();
  }
  return *registry_;
}

Registry& Session::OpenExistingRegistry() {
  if (!registry_ && platform_.UsesHiveFile()) {
    std::error_code error;
    if (!std::filesystem::exists(std::filesystem::path(hivePath_), error))
      throw NotFoundError("no hive " + hivePath_ + " (it is made by the first command that writes)");
  }
  return OpenRegistry();
}

std::unique_ptr<PluginClient> Session::CreatePluginForTask(const std::string& scenario, const std::string& task) {
  RequireTask(OpenExistingRegistry(), scenario, task);
  return platform_.CreatePlugin();
}

std::unique_ptr<PluginClient> Session::CreatePlugin() {
  OpenRegistry();
  return platform_.CreatePlugin();
}

}  // namespace nv
