// task: the tasks of a scenario listed, one shown as the loader reads it, one deleted.
#include "common/Conversions.h"
#include "common/Error.h"
#include "common/Utf.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/nvhost/ExitCodes.h"
#include "host/nvhost/JsonWriter.h"
#include "host/nvhost/TaskLookup.h"
#include "store/ModuleState.h"
#include "store/RegistryKey.h"
#include "store/RegistryOperations.h"
#include "store/TaskStore.h"

namespace nv {
namespace {

constexpr const char* kUsage =
    "task list SCENARIO [--json] | task show SCENARIO TASK [--json] | task delete SCENARIO TASK";

std::string FunctionName(std::int16_t code) {
  switch (code) {
    case FunctionCode::Split: return "split";
    case FunctionCode::Substrings: return "substrings";
    case FunctionCode::FindValues: return "find";
    default: return std::to_string(code);
  }
}

std::string StatusText(const Text& task) { return ToUtf8(ToText(ReadRegistryValue(task, u"Etat"))); }

std::string JsonNumberOrNull(const std::string& digits) {
  if (digits.empty()) return "null";
  for (const char c : digits) {
    if ((c < '0' || c > '9') && c != '-') return JsonString(digits);
  }
  return digits;
}

int List(Session& session, const Arguments& arguments) {
  RequirePositional(arguments, 2, kUsage);
  const std::string& scenario = arguments.positional[1];
  Registry& registry = session.OpenExistingRegistry();
  const ReadingScope reading(registry);
  UseTasksOf(scenario);
  std::vector<std::string> entries;
  for (const Text& task : SubKeyNames(registry, TasksKeyPath(FromUtf8(scenario)))) {
    std::string function;
    try {
      TaskDefinition definition;
      LoadTaskDefinition(task, definition);
      function = FunctionName(definition.Fonction);
    } catch (const RuntimeError&) {
      function = "invalid";  // a stored value that the loader refuses; `task show` says which
    }
    const std::string status = StatusText(task);
    if (arguments.Has("--json")) {
      entries.push_back(JsonObject({JsonMember("name", JsonString(task)), JsonMember("function", JsonString(function)),
                                    JsonMember("status", JsonNumberOrNull(status))}));
    } else {
      session.Out() << OneLine(task) << "\t" << function << "\t" << status << "\n";
    }
  }
  if (arguments.Has("--json"))
    session.Out() << JsonObject({JsonMember("scenario", JsonString(scenario)), JsonMember("tasks", JsonArray(entries))})
                  << "\n";
  return ExitCode::Success;
}

int Show(Session& session, const Arguments& arguments) {
  RequirePositional(arguments, 3, kUsage);
  const std::string& scenario = arguments.positional[1];
  const std::string& taskName = arguments.positional[2];
  Registry& registry = session.OpenExistingRegistry();
  const ReadingScope reading(registry);
  const TaskDefinition definition = LoadStoredTask(registry, scenario, taskName);
  const Text task = FromUtf8(taskName);
  const bool substrings = definition.Fonction == FunctionCode::Substrings;
  const bool find = definition.Fonction == FunctionCode::FindValues;
  if (arguments.Has("--json")) {
    std::vector<std::string> fields;
    for (const TaskField& field : definition.Fields) {
      std::vector<std::string> members = {JsonMember("var", JsonString(field.Var))};
      if (substrings) {
        members.push_back(JsonMember("start", JsonString(field.Start)));
        members.push_back(JsonMember("end", JsonString(field.End)));
        members.push_back(JsonMember("showSep", JsonString(field.ShowSep)));
      }
      fields.push_back(JsonObject(members));
    }
    session.Out() << JsonObject({JsonMember("scenario", JsonString(scenario)), JsonMember("task", JsonString(taskName)),
                                 JsonMember("function", JsonString(FunctionName(definition.Fonction))),
                                 JsonMember("string", JsonString(definition.Chaine)),
                                 JsonMember("separator", JsonString(definition.Separateur)),
                                 JsonMember("mask", JsonString(definition.Masque)),
                                 JsonMember("filter", JsonString(definition.Filtre)),
                                 JsonMember("caseSensitive", definition.CaseSensitive == 1 ? "true" : "false"),
                                 JsonMember("trim", definition.Trim == 1 ? "true" : "false"),
                                 JsonMember("comment", JsonString(definition.Comment)),
                                 JsonMember("status", JsonNumberOrNull(StatusText(task))),
                                 JsonMember("fields", JsonArray(fields))})
                  << "\n";
    return ExitCode::Success;
  }
  std::ostream& out = session.Out();
  out << "function\t" << FunctionName(definition.Fonction) << "\n"
      << "string\t" << OneLine(definition.Chaine) << "\n";
  if (!find) out << "separator\t" << OneLine(definition.Separateur) << "\n";
  if (find) {
    out << "mask\t" << OneLine(definition.Masque) << "\n"
        << "filter\t" << OneLine(definition.Filtre) << "\n"
        << "case-sensitive\t" << (definition.CaseSensitive == 1 ? "on" : "off") << "\n"
        << "trim\t" << (definition.Trim == 1 ? "on" : "off") << "\n";
  }
  out << "comment\t" << OneLine(definition.Comment) << "\n"
      << "status\t" << StatusText(task) << "\n";
  for (std::size_t i = 0; i < definition.Fields.size(); ++i) {
    const TaskField& field = definition.Fields[i];
    out << "field " << i + 1 << "\t" << OneLine(field.Var);
    if (substrings) out << "\t" << OneLine(field.Start) << "\t" << OneLine(field.End) << "\t" << OneLine(field.ShowSep);
    out << "\n";
  }
  return ExitCode::Success;
}

int Delete(Session& session, const Arguments& arguments) {
  RequirePositional(arguments, 3, kUsage);
  if (arguments.Has("--json")) throw UsageError("--json does not belong to task delete");
  const std::string& scenario = arguments.positional[1];
  RequireTask(session.OpenExistingRegistry(), scenario, arguments.positional[2]);
  Registry& registry = session.OpenRegistryForWriting();
  UniqueRegKey tasks;
  RegStatus status =
      OpenUniqueKey(registry, RegRoot::LocalMachine, TasksKeyPath(FromUtf8(scenario)), RegAccess::AllAccess, tasks);
  if (status == RegError::Success) status = registry.DeleteTree(tasks.Get(), FromUtf8(arguments.positional[2]));
  if (status != RegError::Success)
    throw std::runtime_error("cannot delete the task (registry error " + std::to_string(status) + ")");
  return ExitCode::Success;
}

}  // namespace

int RunTaskCommand(Session& session, const Words& words) {
  const Arguments arguments = ParseArguments(words, {}, {"--json"});
  const auto& p = arguments.positional;
  if (p.empty()) throw UsageError("task needs list, show or delete");
  if (p[0] == "list") return List(session, arguments);
  if (p[0] == "show") return Show(session, arguments);
  if (p[0] == "delete") return Delete(session, arguments);
  throw UsageError("task needs list, show or delete, not '" + p[0] + "'");
}

}  // namespace nv
