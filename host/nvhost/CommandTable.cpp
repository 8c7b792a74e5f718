#include <iostream>

#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/nvhost/HelpTexts.h"
#include "common/Utf.h"
#include "store/ModuleState.h"
#include "store/Texts.h"

namespace nv {

const std::vector<Command>& PortableCommands() {
  static const std::vector<Command> commands = {
      {"reg", "reg import FILE.reg|- | reg export KEY [FILE]",
       "import a regedit file (all of it or nothing), or export a key and everything below it", help::kReg,
       RunRegCommand},
      {"var",
       "var get SCENARIO NAME [--output PATH] [--json] | var set SCENARIO NAME VALUE|--file PATH|- | "
       "var list SCENARIO [--json] | var unset SCENARIO NAME",
       "read, write, list or remove scenario variables (get exits 1 when it is missing)", help::kVar, RunVarCommand},
      {"task", "task list SCENARIO [--json] | task show SCENARIO TASK [--json] | task delete SCENARIO TASK",
       "list the tasks of a scenario, show one task's definition, or delete a task", help::kTask, RunTaskCommand},
      {"run", "run SCENARIO TASK [--report FILE] [--lang fr|en] [--json]",
       "execute a task and print its final status (exit 0 for 2, 3 for 3)", help::kRun, RunRunCommand},
      {"status", "status SCENARIO TASK [--json]",
       "print the status of a task (0 never run, 1 running, 2 ended, 3 failed)", help::kStatus, RunStatusCommand},
      {"describe", "describe SCENARIO TASK [--lang fr|en]", "print the task's HTML description", help::kDescribe,
       RunDescribeCommand},
      {"actions", "actions SCENARIO TASK [--lang fr|en]", "print the text of the task's follow-up actions",
       help::kActions, RunActionsCommand},
      {"action",
       "action add|modify|delete SCENARIO TASK KIND [--go 0|1] [--loop 0|1] [--dest D] [--var V] [--ope 0..5] "
       "[--check 0|1] [--value X]",
       "add, change or delete one follow-up action (KIND: OnErr, OnDec, ExeIf, Goto)", help::kAction,
       RunActionCommand},
      {"edit",
       "edit SCENARIO TASK [--new] [--lang fr|en] [--function split|substrings|find] [--string S] "
       "[--separator S | --separator-choice N] [--mask M] [--filter F] [--case-sensitive on|off] [--trim on|off] "
       "[--field @VAR]... [--no-fields] [--comment C] [--preview] [--confirm|--apply|--cancel]",
       "configure a task through its dialog, run headless; a message it shows is printed and exits 4", help::kEdit,
       RunEditCommand},
      {"check", "check SCENARIO TASK [--json]",
       "find what would go wrong in a task with the current variables, without running it", help::kCheck,
       RunCheckCommand},
  };
  return commands;
}

std::int32_t ParseLanguageOption(const std::string& language) {
  if (language == "fr") return Language::French;
  if (language == "en") return Language::English;
  throw UsageError("--lang takes fr or en, not '" + language + "'");
}

std::int32_t TaskLanguage(const Arguments& arguments) {
  if (const std::optional<std::string> language = arguments.Value("--lang")) return ParseLanguageOption(*language);
  ReadLanguageSetting();
  return Module().LanguageOffset;
}

void PrintCommandHelp(std::ostream& out, const Command& command) {
  out << "usage: nvhost " << command.usage << "\n\n" << command.help << "\n" << help::kExitCodes;
}

bool PrintedHelp(Session& session, const Words& words, const char* usage) {
  if (!AsksForHelp(words)) return false;
  session.Out() << "usage: nvhost " << usage << "\n";
  return true;
}

bool AsksForHelp(const Words& words) {
  for (const std::string& word : words) {
    if (word == "--") return false;
    if (word == "--help" || word == "-h") return true;
  }
  return false;
}

}  // namespace nv
