#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <set>

#include "common/CaseMapping.h"
#include "common/Conversions.h"
#include "common/Utf.h"
#include "host/ScenarioVariables.h"
#include "host/StoredValue.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/nvhost/ExitCodes.h"
#include "host/nvhost/JsonWriter.h"
#include "host/nvhost/TaskLookup.h"
#include "store/RegistryKey.h"
#include "store/TaskDefinition.h"

namespace nv {
namespace {

using VariableValues = std::map<Text, Text>;

// The variables a run of the task can set, upper-cased as the registry compares names: those
// its fields name. Nothing when the task cannot be read (the run then stores nothing).
std::set<Text> FieldVariables(Registry& registry, const Arguments& arguments) {
  std::set<Text> names;
  try {
    for (const TaskField& field : LoadStoredTask(registry, arguments.positional[0], arguments.positional[1]).Fields)
      if (!field.Var.empty()) names.insert(UpperCase(TextView(field.Var).substr(1)));
  } catch (const std::exception&) {
    names.clear();
  }
  return names;
}

// The values of the scenario's variables among `names`: a log of many MiB beside them is
// neither read nor compared.
VariableValues ReadVariables(Registry& registry, const Text& scenario, const std::set<Text>& names) {
  VariableValues values;
  const ReadingScope reading(registry);
  const ScenarioVariables variables(registry);
  for (const Text& name : variables.Names(scenario)) {
    if (!names.contains(UpperCase(name))) continue;
    if (auto value = variables.Get(scenario, name)) values[name] = ToText(std::move(*value));
  }
  return values;
}

std::uintmax_t FileSize(const std::string& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  return error ? 0 : size;
}

// The lines a report file gained since it had `from` bytes.
std::vector<std::string> ReportLinesSince(const std::string& path, std::uintmax_t from) {
  std::ifstream in(path, std::ios::binary);
  std::vector<std::string> lines;
  if (!in) return lines;
  in.seekg(static_cast<std::streamoff>(from));
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(JsonString(line));
  }
  return lines;
}

// A report file of this run's own, removed after it.
class TemporaryReport {
 public:
  TemporaryReport()
      : path_((std::filesystem::temp_directory_path() /
               ("nvhost-report-" + std::to_string(std::random_device()()) + ".log"))
                  .string()) {}
  ~TemporaryReport() {
    std::error_code error;
    std::filesystem::remove(path_, error);
  }
  TemporaryReport(const TemporaryReport&) = delete;
  TemporaryReport& operator=(const TemporaryReport&) = delete;
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace

int RunRunCommand(Session& session, const Words& words) {
  constexpr const char* usage = "run SCENARIO TASK [--report FILE] [--lang fr|en] [--json]";
  const Arguments arguments = ParseArguments(words, {"--report", "--lang"}, {"--json"});
  RequirePositional(arguments, 2, usage);
  const bool json = arguments.Has("--json");
  const Text scenario = FromUtf8(arguments.positional[0]);
  const std::unique_ptr<PluginClient> plugin =
      session.CreatePluginForTask(arguments.positional[0], arguments.positional[1]);
  InitializeForTask(*plugin, arguments);

  std::optional<TemporaryReport> ownReport;
  std::string report = arguments.Value("--report").value_or("");
  if (json && report.empty()) report = ownReport.emplace().Path();
  const std::uintmax_t reportStart = json ? FileSize(report) : 0;
  const std::set<Text> settable = json ? FieldVariables(session.OpenRegistry(), arguments) : std::set<Text>();
  const VariableValues before = json ? ReadVariables(session.OpenRegistry(), scenario, settable) : VariableValues();

  plugin->SetReportFilePath(FromUtf8(report));
  plugin->ExecuteTache();
  const std::int32_t status = plugin->GetStatus();
  if (json) {
    std::vector<std::string> changed;
    for (const auto& [name, value] : ReadVariables(session.OpenRegistry(), scenario, settable)) {
      const auto old = before.find(name);
      if (old == before.end() || old->second != value) changed.push_back(JsonMember(ToUtf8(name), JsonString(value)));
    }
    session.Out() << JsonObject({JsonMember("scenario", JsonString(arguments.positional[0])),
                                 JsonMember("task", JsonString(arguments.positional[1])),
                                 JsonMember("status", std::to_string(status)),
                                 JsonMember("report", JsonArray(ReportLinesSince(report, reportStart))),
                                 JsonMember("variables", JsonObject(changed))})
                  << "\n";
  } else {
    session.Out() << status << "\n";
  }
  // The plug-in carries on past a status it could not write; the run did not do its job.
  std::uint32_t unstored = 0;
  if (const std::optional<std::string> why = session.FailedWrite(u"Etat", &unstored)) {
    session.Err() << "nvhost run: the task's status " << unstored << " could not be stored: " << *why
                  << " (the stored status is " << status << ")\n";
    return ExitCode::IoError;
  }
  switch (status) {
    case TaskStatus::Ended: return ExitCode::Success;
    case TaskStatus::Failed: return ExitCode::FailedRun;
    default: return ExitCode::IoError;
  }
}

}  // namespace nv
