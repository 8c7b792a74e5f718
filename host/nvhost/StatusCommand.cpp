#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/nvhost/ExitCodes.h"
#include "host/nvhost/JsonWriter.h"

namespace nv {

int RunStatusCommand(Session& session, const Words& words) {
  constexpr const char* usage = "status SCENARIO TASK [--json]";
  const Arguments arguments = ParseArguments(words, {}, {"--json"});
  RequirePositional(arguments, 2, usage);
  const std::unique_ptr<PluginClient> plugin =
      session.CreatePluginForTask(arguments.positional[0], arguments.positional[1]);
  InitializeForTask(*plugin, arguments);
  const std::int32_t status = plugin->GetStatus();
  if (arguments.Has("--json")) {
    session.Out() << JsonObject({JsonMember("scenario", JsonString(arguments.positional[0])),
                                 JsonMember("task", JsonString(arguments.positional[1])),
                                 JsonMember("status", std::to_string(status))})
                  << "\n";
  } else {
    session.Out() << status << "\n";
  }
  return ExitCode::Success;
}

}  // namespace nv
