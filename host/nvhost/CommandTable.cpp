#include <iostream>

#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "common/Utf.h"
#include "store/ModuleState.h"
#include "store/Texts.h"

namespace nv {

const std::vector<Command>& PortableCommands() {
  static const std::vector<Command> commands = {
      {"reg", "reg import FILE.reg | reg export KEY [FILE]",
       "import a regedit file (all of it or nothing), or export a key and everything below it", RunRegCommand},
      {"var", "var get SCENARIO NAME | var set SCENARIO NAME VALUE",
       "read or write a scenario variable (get exits 1 when it is missing)", RunVarCommand},
      {"run", "run SCENARIO TASK [--report FILE] [--lang fr|en]",
       "execute a task and print its final status (exit 0 for 2, 3 for 3)", RunRunCommand},
      {"status", "status SCENARIO TASK", "print the status of a task (0 never run, 1 running, 2 ended, 3 failed)",
       RunStatusCommand},
      {"describe", "describe SCENARIO TASK [--lang fr|en]", "print the task's HTML description", RunDescribeCommand},
      {"actions", "actions SCENARIO TASK [--lang fr|en]", "print the text of the task's follow-up actions",
       RunActionsCommand},
      {"action",
       "action add|modify|delete SCENARIO TASK KIND [--go 0|1] [--loop 0|1] [--dest D] [--var V] [--ope 0..5] "
       "[--check 0|1] [--value X]",
       "add, change or delete one follow-up action (KIND: OnErr, OnDec, ExeIf, Goto)", RunActionCommand},
      {"edit",
       "edit SCENARIO TASK [--new] [--lang fr|en] [--function split|substrings|find] [--string S] "
       "[--separator S | --separator-choice N] [--mask M] [--filter F] [--case-sensitive] [--trim] "
       "[--field @VAR]... [--comment C] [--preview] [--confirm|--apply|--cancel]",
       "configure a task through its dialog, run headless; a message it shows is printed and exits 2",
       RunEditCommand},
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

bool PrintedHelp(Session& session, const Words& words, const char* usage) {
  for (const std::string& word : words) {
    if (word == "--help" || word == "-h") {
      session.Out() << "usage: nvhost " << usage << "\n";
      return true;
    }
  }
  return false;
}

}  // namespace nv
