#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"

namespace nv {

int RunStatusCommand(Session& session, const Words& words) {
  constexpr const char* usage = "status SCENARIO TASK";
  if (PrintedHelp(session, words, usage)) return 0;
  const Arguments arguments = ParseArguments(words, {}, {});
  RequirePositional(arguments, 2, usage);
  const std::unique_ptr<PluginClient> plugin = session.CreatePlugin();
  InitializeForTask(*plugin, arguments);
  session.Out() << plugin->GetStatus() << "\n";
  return 0;
}

}  // namespace nv
