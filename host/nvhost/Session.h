#pragma once
// One nvhost invocation: its streams, and the hive and host services it sets up on first use.
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "host/NativeHostServices.h"
#include "host/WriteWatchingRegistry.h"
#include "host/nvhost/HostPlatform.h"
#include "host/nvhost/OptionsActionPrompt.h"
#include "store/Registry.h"

namespace nv {

class Session {
 public:
  Session(HostPlatform& platform, std::string hivePath, std::ostream& out, std::ostream& err);
  ~Session();

  // Opens the registry and makes it, with the stand-in services, the module's platform; a
  // bad hive is raised.
  Registry& OpenRegistry();
  // The same for a command that only reads: a hive file that does not exist is not created
  // but reported (NotFoundError).
  Registry& OpenExistingRegistry();
  // A new plug-in object for SCENARIO TASK that must exist (NotFoundError otherwise).
  std::unique_ptr<PluginClient> CreatePluginForTask(const std::string& scenario, const std::string& task);
  // The same for a command that writes: a registry that cannot be written is raised, naming
  // its file, before anything is done.
  Registry& OpenRegistryForWriting();
  // The last write of a value of this name that failed in this session, and why in words.
  std::optional<std::string> FailedWrite(TextView valueName, std::uint32_t* dword = nullptr) const;
  // A new plug-in object, over the open registry.
  std::unique_ptr<PluginClient> CreatePlugin();
  HostPlatform& Platform() { return platform_; }
  const std::string& HivePath() const { return hivePath_; }

  std::ostream& Out() { return out_; }
  std::ostream& Err() { return err_; }
  OptionsActionPrompt& Prompt() { return prompt_; }

 private:
  HostPlatform& platform_;
  std::string hivePath_;
  std::ostream& out_;
  std::ostream& err_;
  OptionsActionPrompt prompt_;
  std::unique_ptr<Registry> registry_;
  std::unique_ptr<WriteWatchingRegistry> watched_;
  std::unique_ptr<NativeHostServices> services_;
};

}  // namespace nv
