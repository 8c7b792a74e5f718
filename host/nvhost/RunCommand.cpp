#include "common/Utf.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"

namespace nv {

int RunRunCommand(Session& session, const Words& words) {
  constexpr const char* usage = "run SCENARIO TASK [--report FILE] [--lang fr|en]";
  if (PrintedHelp(session, words, usage)) return 0;
  const Arguments arguments = ParseArguments(words, {"--report", "--lang"}, {});
  RequirePositional(arguments, 2, usage);
  const std::unique_ptr<PluginClient> plugin = session.CreatePlugin();
  InitializeForTask(*plugin, arguments);
  plugin->SetReportFilePath(FromUtf8(arguments.Value("--report").value_or("")));
  plugin->ExecuteTache();
  const std::int32_t status = plugin->GetStatus();
  session.Out() << status << "\n";
  return status == 2 ? 0 : status == 3 ? 3 : 1;
}

}  // namespace nv
