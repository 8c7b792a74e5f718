#include "host/nvhost/Session.h"

#include <ostream>

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

std::unique_ptr<PluginClient> Session::CreatePlugin() {
  OpenRegistry();
  return platform_.CreatePlugin();
}

}  // namespace nv
