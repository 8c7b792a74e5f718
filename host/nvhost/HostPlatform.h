#pragma once
// What nvhost stands on: natively the SQLite hive and the plug-in linked in; on Windows the
// registry and the registered COM server. One implementation is linked per platform.
#include <memory>
#include <string>
#include <vector>

#include "host/nvhost/PluginClient.h"
#include "store/Registry.h"

namespace nv {

struct Command;

class HostPlatform {
 public:
  virtual ~HostPlatform() = default;
  // The registry behind the reg and var commands and the in-process stand-ins; a bad one
  // is raised.
  virtual std::unique_ptr<Registry> OpenRegistry(const std::string& hivePath) = 0;
  // Why `registry` (as OpenRegistry gave it) cannot be written, naming its file; empty when
  // it can, or when only trying tells.
  virtual std::string ReadOnlyReason(Registry& /*registry*/) const { return {}; }
  // The largest value data, in bytes, the registry stores; the registry's own calls take a
  // 32-bit size.
  virtual std::uint64_t LargestValueBytes() const { return 0xFFFFFFFF; }
  // A new plug-in object; the registry is open by then.
  virtual std::unique_ptr<PluginClient> CreatePlugin() = 0;
  // Whether the task dialog can be shown on a screen.
  virtual bool ShowsWindows() const = 0;
  // Whether --hive means anything here.
  virtual bool UsesHiveFile() const = 0;
  // Commands that only this platform has.
  virtual const std::vector<Command>& OwnCommands() const = 0;
};

// The platform's nvhost, ready for use (on Windows: COM entered on this thread).
std::unique_ptr<HostPlatform> MakeHostPlatform();

// The words after the program's name, in UTF-8.
std::vector<std::string> CommandLineWords(int argc, char** argv);

}  // namespace nv
