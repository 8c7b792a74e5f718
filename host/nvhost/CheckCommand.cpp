// check: the linter of a stored task against the current variable values.
#include "common/Conversions.h"
#include "common/Utf.h"
#include "host/ScenarioVariables.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/nvhost/ExitCodes.h"
#include "host/nvhost/JsonWriter.h"
#include "host/nvhost/TaskLinter.h"
#include "host/nvhost/TaskLookup.h"

namespace nv {

int RunCheckCommand(Session& session, const Words& words) {
  const Arguments arguments = ParseArguments(words, {}, {"--json"});
  RequirePositional(arguments, 2, "check SCENARIO TASK [--json]");
  const std::string& scenario = arguments.positional[0];
  const std::string& task = arguments.positional[1];
  Registry& registry = session.OpenExistingRegistry();
  const ReadingScope reading(registry);
  const TaskDefinition definition = LoadStoredTask(registry, scenario, task);
  const ScenarioVariables variables(registry);
  const std::vector<LintFinding> findings = LintTask(definition, [&](const Text& name) -> std::optional<Text> {
    const auto value = variables.Get(FromUtf8(scenario), name);
    return value ? std::optional<Text>(ToText(*value)) : std::nullopt;
  });
  if (arguments.Has("--json")) {
    std::vector<std::string> entries;
    for (const LintFinding& finding : findings) {
      entries.push_back(JsonObject({JsonMember("severity", JsonString(std::string(SeverityName(finding.severity)))),
                                    JsonMember("message", JsonString(finding.message))}));
    }
    session.Out() << JsonObject({JsonMember("scenario", JsonString(scenario)), JsonMember("task", JsonString(task)),
                                 JsonMember("findings", JsonArray(entries))})
                  << "\n";
  } else {
    for (const LintFinding& finding : findings)
      session.Out() << SeverityName(finding.severity) << "\t" << finding.message << "\n";
  }
  return findings.empty() ? ExitCode::Success : ExitCode::NotFound;
}

}  // namespace nv
