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
namespace {

// The scenario's variables in the hive: a long text is counted while it is read, in pieces,
// so that checking a task over a log of many MiB costs what running it costs.
class StoredVariables final : public LintVariables {
 public:
  StoredVariables(Registry& registry, Text scenario) : variables_(registry), scenario_(std::move(scenario)) {}

  std::optional<Text> Value(const Text& name) override {
    std::optional<Variant> value = variables_.Get(scenario_, name);
    if (!value) return std::nullopt;
    return value->IsText() ? std::move(*value).TakeText() : ToText(*value);
  }
  bool Exists(const Text& name) override { return variables_.Exists(scenario_, name); }
  std::optional<Separators> CountSeparators(const Text& name, TextView separator) override {
    PieceScanner scanner(separator, 1);
    std::optional<std::size_t> count;
    const StretchSelector countOnly = [&](TextView whole, PieceScanner& scanned) {
      count = PieceCut(whole, std::move(scanned)).LastIndex();
      return std::vector<UnitSpan>();
    };
    // Only a long text is read so; any other value is read whole.
    if (variables_.GetPartly(scenario_, name, scanner, countOnly) && count) return Separators{*count, false};
    return LintVariables::CountSeparators(name, separator);
  }

 private:
  const ScenarioVariables variables_;
  const Text scenario_;
};

}  // namespace

int RunCheckCommand(Session& session, const Words& words) {
  const Arguments arguments = ParseArguments(words, {}, {"--json"});
  RequirePositional(arguments, 2, "check SCENARIO TASK [--json]");
  const std::string& scenario = arguments.positional[0];
  const std::string& task = arguments.positional[1];
  Registry& registry = session.OpenExistingRegistry();
  const ReadingScope reading(registry);
  const TaskDefinition definition = LoadStoredTask(registry, scenario, task);
  StoredVariables variables(registry, FromUtf8(scenario));
  const std::vector<LintFinding> findings = LintTask(definition, variables);
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
