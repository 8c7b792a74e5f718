// nvhost: the command line through which a person, or a test, drives the plug-in.
#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "common/Error.h"
#include "host/DefaultHive.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/nvhost/Documentation.h"
#include "host/nvhost/ExitCodes.h"
#include "host/nvhost/HelpTexts.h"
#include "host/nvhost/HostPlatform.h"

namespace {

std::vector<nv::Command> CommandsOf(const nv::HostPlatform& platform) {
  std::vector<nv::Command> commands = nv::PortableCommands();
  commands.insert(commands.end(), platform.OwnCommands().begin(), platform.OwnCommands().end());
  return commands;
}

const nv::Command* FindCommand(const std::vector<nv::Command>& commands, const std::string& name) {
  for (const nv::Command& command : commands) {
    if (name == command.name) return &command;
  }
  return nullptr;
}

void PrintGeneralHelp(std::ostream& out, const nv::HostPlatform& platform) {
  out << nv::GeneralHelpIntro(platform.UsesHiveFile()) << "commands:\n";
  for (const nv::Command& command : CommandsOf(platform)) {
    out << "  " << command.usage << "\n      " << command.summary << "\n";
  }
  out << "\n'nvhost help COMMAND' or 'nvhost COMMAND --help' explains one command.\n"
         "'nvhost --version' prints the version.\n\n"
      << nv::help::kExitCodes;
}

// help, --help, --version and the generated documents; nothing of them touches the registry.
int RunInformation(const std::vector<std::string>& words, std::size_t next, const nv::HostPlatform& platform) {
  const std::vector<nv::Command> commands = CommandsOf(platform);
  const std::string& word = words[next];
  if (word == "--version") {
    std::cout << nv::VersionText() << "\n";
    return nv::ExitCode::Success;
  }
  if (word == "--generate") {
    // Hidden: the build writes the man page and the completion with it.
    if (next + 1 >= words.size()) throw nv::UsageError("--generate takes man or bash-completion");
    std::ostringstream document;
    if (words[next + 1] == "man") {
      nv::WriteManPage(document, commands);
    } else if (words[next + 1] == "bash-completion") {
      nv::WriteBashCompletion(document, commands);
    } else {
      throw nv::UsageError("--generate takes man or bash-completion, not '" + words[next + 1] + "'");
    }
    if (next + 2 >= words.size()) {
      std::cout << document.str();
    } else {
      std::ofstream file(words[next + 2], std::ios::binary | std::ios::trunc);
      file << document.str();
      file.close();
      if (!file) throw std::runtime_error("cannot write " + words[next + 2]);
    }
    return nv::ExitCode::Success;
  }
  if (word == "help" && next + 1 < words.size()) {
    const nv::Command* command = FindCommand(commands, words[next + 1]);
    if (command == nullptr) throw nv::UsageError("no command '" + words[next + 1] + "' (nvhost --help lists them)");
    nv::PrintCommandHelp(std::cout, *command);
    return nv::ExitCode::Success;
  }
  PrintGeneralHelp(std::cout, platform);
  return nv::ExitCode::Success;
}

bool IsInformation(const std::string& word) {
  return word == "--help" || word == "-h" || word == "help" || word == "--version" || word == "--generate";
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
        if (next + 1 >= words.size() || words[next + 1].empty()) throw nv::UsageError("option --hive needs a file");
        hivePath = words[next + 1];
        next += 2;
      }
      if (next >= words.size()) {
        PrintGeneralHelp(std::cerr, *platform);
        return nv::ExitCode::Usage;
      }
      if (IsInformation(words[next])) return RunInformation(words, next, *platform);
      if (hivePath.empty() && platform->UsesHiveFile()) hivePath = nv::DefaultHivePath();
      const std::vector<nv::Command> commands = CommandsOf(*platform);
      const nv::Command* command = FindCommand(commands, words[next]);
      if (command == nullptr) throw nv::UsageError("unknown command '" + words[next] + "' (nvhost --help lists them)");
      const nv::Words rest(words.begin() + static_cast<std::ptrdiff_t>(next) + 1, words.end());
      if (nv::AsksForHelp(rest)) {
        nv::PrintCommandHelp(std::cout, *command);
        return nv::ExitCode::Success;
      }
      nv::Session session(*platform, hivePath, std::cout, std::cerr);
      try {
        return command->run(session, rest);
      } catch (const nv::UsageError& error) {
        std::cerr << "nvhost " << command->name << ": " << error.what() << "\nusage: nvhost " << command->usage
                  << "\n";
        return nv::ExitCode::Usage;
      }
    } catch (const nv::UsageError& error) {
      std::cerr << "nvhost: " << error.what() << "\n";
      return nv::ExitCode::Usage;
    }
  } catch (const nv::NotFoundError& error) {
    std::cerr << "nvhost: " << error.what() << "\n";
    return nv::ExitCode::NotFound;
  } catch (const nv::RuntimeError& error) {
    std::cerr << "nvhost: error " << error.Number() << ": " << error.what() << "\n";
    return nv::ExitCode::IoError;
  } catch (const std::exception& error) {
    std::cerr << "nvhost: " << error.what() << "\n";
    return nv::ExitCode::IoError;
  }
}
