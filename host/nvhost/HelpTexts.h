#pragma once
// The long help of each command: what `nvhost help COMMAND` and `COMMAND --help` print, and
// what the man page and the shell completion are generated from. Options are written
// "--name" at the start of an indented line so that the generators can find them.

namespace nv::help {

inline constexpr const char* kExitCodes =
    "exit status:\n"
    "  0  success (run: the task ended, status 2)\n"
    "  1  not found: no such variable (var get), task, key or hive; check: findings;\n"
    "     edit on screen (nvhost.exe): the person cancelled the dialog\n"
    "  2  usage error: the command line is wrong, nothing was done\n"
    "  3  run: the task failed (status 3; the reason is in the report)\n"
    "  4  edit: the dialog showed a message (printed on stdout, one line each)\n"
    "  5  I/O or hive error: a file, the hive or the registry failed, or the plug-in raised an error\n";

inline constexpr const char* kReg =
    "Registry files as regedit reads and writes them.\n"
    "\n"
    "  reg import FILE.reg   applies the whole file, or nothing of it when one line is wrong.\n"
    "                        FILE is - for standard input. Accepted: \"Windows Registry Editor\n"
    "                        Version 5.00\" in UTF-16LE with a byte-order mark or in UTF-8, and\n"
    "                        REGEDIT4 (ANSI). Inside quoted text \\\\ \\\" \\r \\n and \\0 are escapes.\n"
    "  reg export KEY [FILE] writes KEY and everything below it; a FILE is UTF-16LE with a\n"
    "                        byte-order mark (as regedit writes it), standard output is UTF-8.\n"
    "                        A key that does not exist exits 1.\n"
    "\n"
    "KEY is written as regedit writes it: HKEY_LOCAL_MACHINE\\SOFTWARE\\... (HKLM\\... too).\n"
    "\n"
    "example:\n"
    "  nvhost reg export 'HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\Scenarios\\Demo' demo.reg\n";

inline constexpr const char* kHive =
    "The hive file itself (natively; the registry of Windows has none).\n"
    "\n"
    "  hive check [FILE]        checks FILE (the --hive one by default) in full: its pages, its\n"
    "                           indexes and its tree of keys and values. Prints \"sound\" and exits\n"
    "                           0, or \"damaged\" with the problems found and exits 1.\n"
    "  hive recover FILE OUT    copies every key and value that can still be read out of a damaged\n"
    "                           FILE into a new hive OUT (which must not exist). What could not be\n"
    "                           read is listed on standard error, and the exit status is then 1.\n"
    "\n"
    "Every command checks its hive before trusting it: a damaged one is refused, untouched, with\n"
    "its file name and what is wrong.\n"
    "\n"
    "example:\n"
    "  nvhost hive recover ~/.local/share/nvextch/hive.db rescued.db\n";

inline constexpr const char* kVar =
    "Scenario variables: one text value each under\n"
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\Scenarios\\SCENARIO\\Variables.\n"
    "\n"
    "  var get SCENARIO NAME     prints the value and one newline; exit 1 when it is missing.\n"
    "    --output PATH           writes the value's bytes (UTF-8) to PATH, with no newline added\n"
    "    --json                  prints {\"scenario\":..., \"name\":..., \"value\":...}\n"
    "  var set SCENARIO NAME VALUE\n"
    "  var set SCENARIO NAME --file PATH\n"
    "  var set SCENARIO NAME -   the value from VALUE, from the file PATH or from standard input\n"
    "                            (-), byte for byte: a trailing newline is kept; the bytes must be\n"
    "                            UTF-8 (the offset of the first bad byte is reported). A text\n"
    "                            longer than a value holds is refused as soon as it is seen.\n"
    "    --file PATH             read the value from PATH\n"
    "  var list SCENARIO         the names of the scenario's variables, one a line\n"
    "    --json                  prints {\"scenario\":..., \"variables\":[{\"name\":..., \"value\":...}]}\n"
    "  var unset SCENARIO NAME   removes the variable; exit 1 when it is missing\n"
    "\n"
    "example (the last lines of a log, exactly as in the file):\n"
    "  nvhost var set Jobs Log --file /var/log/backup.log\n"
    "  nvhost var get Jobs Log --output copy.log\n";

inline constexpr const char* kTask =
    "The tasks of a scenario, under\n"
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\Scenarios\\SCENARIO\\Taches\\TASK.\n"
    "\n"
    "  task list SCENARIO        one line per task: name, function, status (tab-separated)\n"
    "  task show SCENARIO TASK   the definition as a run reads it: function, string, separator,\n"
    "                            mask, filter, case-sensitive, trim, comment, then one line per field\n"
    "  task delete SCENARIO TASK removes the task with its actions; exit 1 when it is missing\n"
    "    --json                  (list, show) one JSON document instead of lines\n"
    "\n"
    "Functions: split (0), substrings (1), find (2). Status: 0 never run, 1 running, 2 ended,\n"
    "3 failed.\n"
    "\n"
    "example:\n"
    "  nvhost task show Demo SplitCustomer\n";

inline constexpr const char* kRun =
    "Executes a task as the host does (InitializeProperties, then ExecuteTache) and prints its\n"
    "final status: exit 0 for status 2 (ended), 3 for status 3 (failed; the reason is in the report).\n"
    "\n"
    "  --report FILE  report lines go to FILE (UTF-8, one stamped line each); standard error\n"
    "                 without it\n"
    "  --lang fr|en   the language of the report lines (default: the Lang setting)\n"
    "  --json         prints {\"status\":N, \"report\":[lines of this run], \"variables\":{name:value}}\n"
    "                 with the variables the run set\n"
    "\n"
    "example:\n"
    "  nvhost run Demo LogLines --report run.log\n";

inline constexpr const char* kStatus =
    "Prints the stored status of a task: 0 never run, 1 running, 2 last run ended, 3 last run\n"
    "failed. A task that does not exist exits 1.\n"
    "\n"
    "  --json   prints {\"scenario\":..., \"task\":..., \"status\":N}\n"
    "\n"
    "example:\n"
    "  nvhost status Demo LogLines\n";

inline constexpr const char* kDescribe =
    "Prints the task's HTML description as the host shows it.\n"
    "\n"
    "  --lang fr|en   the language of the texts (default: the Lang setting)\n"
    "\n"
    "example:\n"
    "  nvhost describe Demo ReadSettings --lang en\n";

inline constexpr const char* kActions =
    "Prints the text of the task's follow-up actions as the host shows it.\n"
    "\n"
    "  --lang fr|en   the language of the texts (default: the Lang setting)\n"
    "\n"
    "example:\n"
    "  nvhost actions Demo ReadSettings --lang en\n";

inline constexpr const char* kAction =
    "Adds, changes or deletes one follow-up action of a task through the host's actions editor.\n"
    "KIND: OnErr (0, when the task fails), OnDec (1, when it is not triggered), ExeIf (2, a\n"
    "condition for running it), Goto (3, a jump after it).\n"
    "\n"
    "  --go 0|1        OnErr, OnDec: go on with the scenario\n"
    "  --loop 0|1      OnErr: run the task again\n"
    "  --dest D        Goto: the destination\n"
    "  --var V         Goto, ExeIf: the variable tested\n"
    "  --ope 0..5      Goto: the comparison: 0 <, 1 <=, 2 >, 3 >=, 4 =, 5 <>\n"
    "  --check 0|1     Goto: test after the run\n"
    "  --value X       Goto, ExeIf: the value compared with\n"
    "  --lang fr|en    the language of the help the editor prints\n"
    "\n"
    "example:\n"
    "  nvhost action add Demo LogLines Goto --dest Report --var Lines --ope 4 --value 0 --check 1\n";

inline constexpr const char* kEdit =
    "Configures a task through its dialog, run headless: the options play the user, in the\n"
    "order a user works (function, entries, fields, comment, Preview, a button). A message\n"
    "the dialog shows is printed on stdout and the exit status is 4; a warning (message 603)\n"
    "is printed and the save goes on, as in the dialog.\n"
    "\n"
    "  --new                       a new task; without it the task must exist\n"
    "  --function split|substrings|find\n"
    "                              split: piece k of the string goes to field k;\n"
    "                              substrings: each field takes a range of pieces;\n"
    "                              find: each filter text in the mask marks one value\n"
    "  --string S                  the string: a text, or @NAME for a variable's value\n"
    "  --separator S               split, substrings: the separator (the choice \"other\")\n"
    "  --separator-choice N        split, substrings: 0 comma, 1 semicolon, 2 colon, 3 space,\n"
    "                              4 tab, 5 CR, 6 LF, 7 CR LF, 8 other (the text of --separator)\n"
    "  --mask M                    find: literal text in which each occurrence of the filter\n"
    "                              marks the place of one value (host=*; port=*)\n"
    "  --filter F                  find: the text that marks a value in the mask (*)\n"
    "  --case-sensitive on|off     find: compare the mask as written (off: upper-case forms)\n"
    "  --trim on|off               find: remove the spaces around each value\n"
    "  --field @VAR                split, find: the variable of the next field, as typed into\n"
    "                              the grid (a name without @ gets message 603)\n"
    "  --field @VAR:START:END[:SHOWSEP]\n"
    "                              substrings: pieces START to END of the string cut at the\n"
    "                              separator. START counts from 0 (-1 is the last piece);\n"
    "                              END counts from 1 (0 through the last piece, -1 all but the\n"
    "                              last); 0:0 is the whole text. SHOWSEP True keeps the\n"
    "                              separators around the range (default False)\n"
    "  --no-fields                 the task has no field at all\n"
    "  --comment C                 the task's comment\n"
    "  --preview                   press Preview and print one line per field: number, value,\n"
    "                              variable (tab-separated)\n"
    "  --confirm | --apply | --cancel\n"
    "                              the button pressed at the end. Default --confirm, except\n"
    "                              that --preview alone presses --cancel (nothing is saved).\n"
    "                              nvhost.exe opens the dialog on screen when no button and no\n"
    "                              other option is given\n"
    "  --lang fr|en                the language of the dialog's messages\n"
    "An option that does not belong to the chosen function is a usage error.\n"
    "\n"
    "examples:\n"
    "  nvhost edit Jobs Csv --new --function split --string @Line --separator-choice 1 \\\n"
    "      --field @Name --field @First --field @City --field @Zip --field @Phone\n"
    "  nvhost edit Jobs Tail --new --function substrings --string @Log --separator-choice 6 \\\n"
    "      --field @Last3:-4:-1:True\n";

inline constexpr const char* kCheck =
    "Checks a stored task against the current variable values without running it, and prints\n"
    "one line per finding: its severity (error or warning), a tab, what is wrong. Exit 0 when\n"
    "nothing is found, 1 with findings.\n"
    "\n"
    "  --json   prints {\"scenario\":..., \"task\":..., \"findings\":[{\"severity\":..., \"message\":...}]}\n"
    "\n"
    "example:\n"
    "  nvhost check Demo ReadSettings\n";

inline constexpr const char* kHelp =
    "Prints the help of one command, or the general help.\n"
    "\n"
    "example:\n"
    "  nvhost help edit\n";

}  // namespace nv::help
