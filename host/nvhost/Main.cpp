// nvhost: the command line through which a person, or a test, drives the plug-in.
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "common/Error.h"
#include "host/DefaultHive.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/nvhost/HostPlatform.h"

namespace {

std::vector<nv::Command> CommandsOf(const nv::HostPlatform& platform) {
  std::vector<nv::Command> commands = nv::PortableCommands();
  commands.insert(commands.end(), platform.OwnCommands().begin(), platform.OwnCommands().end());
  return commands;
}

void PrintGeneralHelp(std::ostream& out, const nv::HostPlatform& platform) {
  if (platform.UsesHiveFile()) {
    out << "usage: nvhost [--hive FILE] COMMAND [ARGS...]\n\n"
           "The host of the String extraction plug-in over a registry hive (default:\n"
           "$NVEXTCH_HIVE, else $XDG_DATA_HOME/nvextch/hive.db, else ~/.local/share/nvextch/hive.db).\n\n";
  } else {
    out << "usage: nvhost COMMAND [ARGS...]\n\n"
           "The host of the String extraction plug-in: a COM client of the registered NVextch.dll,\n"
           "over the Windows registry.\n\n";
  }
  out << "commands:\n";
  for (const nv::Command& command : CommandsOf(platform)) {
    out << "  " << command.usage << "\n      " << command.summary << "\n";
  }
  out << "\n'nvhost COMMAND --help' shows the help of one command.\n";
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const std::unique_ptr<nv::HostPlatform> platform = nv::MakeHostPlatform();
    const std::vector<std::string> words = nv::CommandLineWords(argc, argv);
    std::string hivePath;
    std::size_t next = 0;
    try {
      while (next < words.size() && words[next] == "--hive") {
        if (!platform->UsesHiveFile()) throw nv::UsageError("--hive has no meaning here: nvhost works on the registry");
        if (next + 1 >= words.size()) throw nv::UsageError("option --hive needs a file");
        hivePath = words[next + 1];
        next += 2;
      }
      if (next >= words.size() || words[next] == "--help" || words[next] == "-h" || words[next] == "help") {
        PrintGeneralHelp(next >= words.size() ? std::cerr : std::cout, *platform);
        return next >= words.size() ? 2 : 0;
      }
      if (hivePath.empty() && platform->UsesHiveFile()) hivePath = nv::DefaultHivePath();
      nv::Session session(*platform, hivePath, std::cout, std::cerr);
      const std::string name = words[next];
      const nv::Words rest(words.begin() + static_cast<std::ptrdiff_t>(next) + 1, words.end());
      for (const nv::Command& command : CommandsOf(*platform)) {
        if (name != command.name) continue;
        try {
          return command.run(session, rest);
        } catch (const nv::UsageError& error) {
          std::cerr << "nvhost " << name << ": " << error.what() << "\nusage: nvhost " << command.usage << "\n";
          return 2;
        }
      }
      throw nv::UsageError("unknown command '" + name + "' (nvhost --help lists them)");
    } catch (const nv::UsageError& error) {
      std::cerr << "nvhost: " << error.what() << "\n";
      return 2;
    }
  } catch (const nv::RuntimeError& error) {
    std::cerr << "nvhost: error " << error.Number() << ": " << error.what() << "\n";
    return 1;
  } catch (const std::exception& error) {
    std::cerr << "nvhost: " << error.what() << "\n";
    return 1;
  }
}
