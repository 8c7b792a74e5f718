#include "host/nvhost/Session.h"

#include <filesystem>
#include <ostream>

#include <stdexcept>

#include "host/nvhost/ExitCodes.h"
#include "host/nvhost/TaskLookup.h"

#include "plugin/HostModule.h"
#include "store/ModuleState.h"
#include "store/RegistryStatusText.h"

namespace nv {

Session::Session(HostPlatform& platform, std::string hivePath, std::ostream& out, std::ostream& err)
    : platform_(platform), hivePath_(std::move(hivePath)), out_(out), err_(err), prompt_(out) {}

Session::~Session() {
  HostModule().ReportWriterInstance.reset();
  Module().PlatformRegistry = nullptr;
  HostModule().PlatformServices = nullptr;
}

Registry& Session::OpenRegistry() {
  if (!registry_) {
    registry_ = platform_.OpenRegistry(hivePath_);
    watched_ = std::make_unique<WriteWatchingRegistry>(*registry_);
    // With no report file, report lines go to standard error.
    services_ = std::make_unique<NativeHostServices>(*watched_, prompt_,
                                                     [this](const std::string& line) { err_ << line << std::flush; });
    Module().PlatformRegistry = watched_.get();
    HostModule().PlatformServices = services_.get();
  }
  return *watched_;
}

Registry& Session::OpenRegistryForWriting() {
  Registry& registry = OpenRegistry();
  if (std::string reason = platform_.ReadOnlyReason(*registry_); !reason.empty()) throw std::runtime_error(reason);
  return registry;
}

std::optional<std::string> Session::FailedWrite(TextView valueName, std::uint32_t* dword) const {
  if (!watched_) return std::nullopt;
  const auto failed = watched_->LastFailedWrite(valueName);
  if (!failed) return std::nullopt;
  if (dword != nullptr && failed->data.size() == 4) {
    *dword = failed->data[0] | failed->data[1] << 8 | failed->data[2] << 16 | static_cast<std::uint32_t>(failed->data[3]) << 24;
  }
  if (std::string reason = platform_.ReadOnlyReason(*registry_); !reason.empty()) return reason;
  return RegistryStatusText(failed->status);
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
