#include "common/Conversions.h"
#include "common/Utf.h"
#include "host/ScenarioVariables.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"

namespace nv {

int RunVarCommand(Session& session, const Words& words) {
  constexpr const char* usage = "var get SCENARIO NAME | var set SCENARIO NAME VALUE";
  if (PrintedHelp(session, words, usage)) return 0;
  const Arguments arguments = ParseArguments(words, {}, {});
  const auto& p = arguments.positional;
  if (p.empty()) throw UsageError("var needs get or set");
  ScenarioVariables variables(session.OpenRegistry());
  if (p[0] == "get") {
    RequirePositional(arguments, 3, usage);
    const auto value = variables.Get(FromUtf8(p[1]), FromUtf8(p[2]));
    if (!value) {
      session.Err() << "nvhost var: scenario " << p[1] << " has no variable " << p[2] << "\n";
      return 1;
    }
    session.Out() << ToUtf8(ToText(*value)) << "\n";
    return 0;
  }
  if (p[0] == "set") {
    RequirePositional(arguments, 4, usage);
    variables.Set(FromUtf8(p[1]), FromUtf8(p[2]), FromUtf8(p[3]));
    return 0;
  }
  throw UsageError("var needs get or set, not '" + p[0] + "'");
}

}  // namespace nv
