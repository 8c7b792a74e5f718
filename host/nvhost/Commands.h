#pragma once
// The commands of nvhost. Each takes the words after its own name and returns the exit
// status; usage mistakes are raised as UsageError.
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "common/Utf.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Session.h"

namespace nv {

using Words = std::vector<std::string>;

struct Command {
  const char* name;
  const char* usage;    // shown by --help and on a usage error
  const char* summary;  // one line for the general help
  const char* help;     // the long help: options with their meaning, an example
  int (*run)(Session& session, const Words& words);
};

// The commands every platform has; a platform adds its own (HostPlatform::OwnCommands).
const std::vector<Command>& PortableCommands();

int RunRegCommand(Session& session, const Words& words);
int RunVarCommand(Session& session, const Words& words);
int RunStatusCommand(Session& session, const Words& words);
int RunRunCommand(Session& session, const Words& words);
int RunDescribeCommand(Session& session, const Words& words);
int RunActionsCommand(Session& session, const Words& words);
int RunActionCommand(Session& session, const Words& words);
int RunEditCommand(Session& session, const Words& words);
int RunTaskCommand(Session& session, const Words& words);
int RunCheckCommand(Session& session, const Words& words);

// The commands on the hive file itself (hive check, hive recover), natively.
const std::vector<Command>& HiveFileCommands();

// The --lang language, or else the configured one (the registry is open by then).
std::int32_t TaskLanguage(const Arguments& arguments);

// InitializeProperties as the host calls it for SCENARIO TASK (the first two positional
// words), in the task's language. Works on the linked-in plug-in and on a PluginClient.
template <typename Plugin>
void InitializeForTask(Plugin& plugin, const Arguments& arguments) {
  plugin.InitializeProperties(FromUtf8(arguments.positional[1]), FromUtf8(arguments.positional[0]),
                              TaskLanguage(arguments));
}

// "fr" or "en" as the language offset.
std::int32_t ParseLanguageOption(const std::string& language);

// Whether the words (before a "--") ask for help.
bool AsksForHelp(const Words& words);
// True (after printing the usage) when the words ask for help.
bool PrintedHelp(Session& session, const Words& words, const char* usage);
// The usage line, the long help and the exit statuses.
void PrintCommandHelp(std::ostream& out, const Command& command);

}  // namespace nv
