// describe, actions and action: the task's description, its actions text, and the
// actions editor driven from the command line.
#include <map>

#include "common/Conversions.h"
#include "common/Error.h"
#include "common/Utf.h"
#include "host/RegistryActionsEditor.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/nvhost/TaskLookup.h"
#include "host/regfile/RegNameLimits.h"
#include "plugin/ExtractionChaine.h"
#include "plugin/HostModule.h"
#include "store/ActionsLayout.h"
#include "store/ModuleState.h"

namespace nv {
namespace {

// describe and actions: the plug-in set up for one task as the host sets it up, and the
// text that `produce` asks of it.
int PrintTaskText(Session& session, const Words& words, const char* usage, Text (PluginClient::*produce)()) {
  const Arguments arguments = ParseArguments(words, {"--lang"}, {});
  RequirePositional(arguments, 2, usage);
  const std::unique_ptr<PluginClient> plugin =
      session.CreatePluginForTask(arguments.positional[0], arguments.positional[1]);
  InitializeForTask(*plugin, arguments);
  session.Out() << ToUtf8(((*plugin).*produce)()) << "\n";
  return 0;
}

std::int32_t ParseKind(const std::string& word) {
  static const std::map<std::string, std::int32_t> kinds = {
      {"onerr", ActionKind::OnErr}, {"ondec", ActionKind::OnDec}, {"exeif", ActionKind::ExeIf},
      {"goto", ActionKind::Goto},   {"0", ActionKind::OnErr},     {"1", ActionKind::OnDec},
      {"2", ActionKind::ExeIf},     {"3", ActionKind::Goto}};
  std::string lower;
  for (const char c : word) lower.push_back(static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c));
  const auto found = kinds.find(lower);
  if (found == kinds.end()) throw UsageError("KIND is OnErr, OnDec, ExeIf or Goto, not '" + word + "'");
  return found->second;
}

std::optional<std::uint32_t> NumberOption(const Arguments& arguments, const std::string& option, std::uint32_t max) {
  const auto value = arguments.Value(option);
  if (!value) return std::nullopt;
  std::uint32_t number = 0;
  for (const char c : *value) {
    if (c < '0' || c > '9' || number > max) throw UsageError(option + " takes 0 to " + std::to_string(max));
    number = number * 10 + static_cast<std::uint32_t>(c - '0');
  }
  if (value->empty() || number > max) throw UsageError(option + " takes 0 to " + std::to_string(max));
  return number;
}

std::optional<Text> TextOption(const Arguments& arguments, const std::string& option) {
  const auto value = arguments.Value(option);
  return value ? std::optional<Text>(FromUtf8(*value)) : std::nullopt;
}

}  // namespace

int RunDescribeCommand(Session& session, const Words& words) {
  return PrintTaskText(session, words, "describe SCENARIO TASK [--lang fr|en]", &PluginClient::GetTaskDescription);
}

int RunActionsCommand(Session& session, const Words& words) {
  return PrintTaskText(session, words, "actions SCENARIO TASK [--lang fr|en]", &PluginClient::GetActions);
}

int RunActionCommand(Session& session, const Words& words) {
  constexpr const char* usage =
      "action add|modify|delete SCENARIO TASK KIND [--go 0|1] [--loop 0|1] [--dest D] [--var V] [--ope 0..5] "
      "[--check 0|1] [--value X]";
  const Arguments arguments =
      ParseArguments(words, {"--go", "--loop", "--dest", "--var", "--ope", "--check", "--value", "--lang"}, {});
  if (arguments.positional.size() != 4) throw UsageError("usage: " + std::string(usage));
  const std::string& verb = arguments.positional[0];
  if (verb != "add" && verb != "modify" && verb != "delete")
    throw UsageError("action needs add, modify or delete, not '" + verb + "'");
  const Text scenario = FromUtf8(arguments.positional[1]);
  const Text task = FromUtf8(arguments.positional[2]);
  ActionValues values;
  values.kind = ParseKind(arguments.positional[3]);
  values.go = NumberOption(arguments, "--go", 1);
  values.loop = NumberOption(arguments, "--loop", 1);
  values.dest = TextOption(arguments, "--dest");
  values.variable = TextOption(arguments, "--var");
  values.ope = NumberOption(arguments, "--ope", 5);
  values.check = NumberOption(arguments, "--check", 1);
  values.value = TextOption(arguments, "--value");
  RequireTask(session.OpenExistingRegistry(), arguments.positional[1], arguments.positional[2]);
  RequireRegistryNames(u"SOFTWARE\\NOVRA\\Scenarios\\" + scenario + u"\\Taches\\" + task + u"\\Action\\Goto");
  session.OpenRegistryForWriting();
  session.Prompt().Answer(values);

  // The same editor that the plug-in drives, prepared as the plug-in prepares it.
  ExtractionChaine plugin;
  plugin.InitializeProperties(task, scenario, Module().LanguageOffset);
  plugin.UseOwnRegistryContext();
  const std::unique_ptr<ActionsEditor> editor = PrepareActionsEditor(task, scenario, verb == "modify");
  if (verb == "add") {
    editor->AddAction();
  } else if (verb == "modify") {
    Text continuation, variable, value;
    editor->ModifyAction(continuation, variable, value, values.kind);
  } else if (verb == "delete") {
    editor->DeleteAction(values.kind);
  } else {
    throw UsageError("action needs add, modify or delete, not '" + verb + "'");
  }
  return 0;
}

}  // namespace nv
