// nvhost: the command line through which a person, or a test, drives the plug-in.
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "common/Error.h"
#include "host/DefaultHive.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"

namespace {

void PrintGeneralHelp(std::ostream& out) {
  out << "usage: nvhost [--hive FILE] COMMAND [ARGS...]\n\n"
         "The host of the String extraction plug-in over a registry hive (default:\n"
         "$NVEXTCH_HIVE, else $XDG_DATA_HOME/nvextch/hive.db, else ~/.local/share/nvextch/hive.db).\n\n"
         "commands:\n";
  for (const nv::Command& command : nv::AllCommands()) {
    out << "  " << command.usage << "\n      " << command.summary << "\n";
  }
  out << "\n'nvhost COMMAND --help' shows the help of one command.\n";
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> words(argv + 1, argv + argc);
  std::string hivePath;
  std::size_t next = 0;
  try {
    while (next < words.size() && words[next] == "--hive") {
      if (next + 1 >= words.size()) throw nv::UsageError("option --hive needs a file");
      hivePath = words[next + 1];
      next += 2;
    }
    if (next >= words.size() || words[next] == "--help" || words[next] == "-h" || words[next] == "help") {
      PrintGeneralHelp(next >= words.size() ? std::cerr : std::cout);
      return next >= words.size() ? 2 : 0;
    }
    if (hivePath.empty()) hivePath = nv::DefaultHivePath();
    nv::Session session(hivePath, std::cout, std::cerr);
    const std::string name = words[next];
    const nv::Words rest(words.begin() + static_cast<std::ptrdiff_t>(next) + 1, words.end());
    for (const nv::Command& command : nv::AllCommands()) {
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
  } catch (const nv::RuntimeError& error) {
    std::cerr << "nvhost: error " << error.Number() << ": " << error.what() << "\n";
    return 1;
  } catch (const std::exception& error) {
    std::cerr << "nvhost: " << error.what() << "\n";
    return 1;
  }
}
