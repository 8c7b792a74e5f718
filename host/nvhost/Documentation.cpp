#include "host/nvhost/Documentation.h"

#include <algorithm>
#include <ostream>
#include <sstream>

#include "host/nvhost/HelpTexts.h"

#ifndef NV_VERSION
#error NV_VERSION is set by the build
#endif

namespace nv {
namespace {

bool IsOptionChar(char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-'; }

void AddOnce(std::vector<std::string>& list, const std::string& word) {
  if (std::find(list.begin(), list.end(), word) == list.end()) list.push_back(word);
}

// roff: backslashes doubled as \e, a line that starts with . or ' protected.
std::string Roff(const std::string& text) {
  std::string out;
  bool lineStart = true;
  for (const char c : text) {
    if (lineStart && (c == '.' || c == '\'')) out += "\\&";
    if (c == '\\') {
      out += "\\e";
    } else if (c == '-') {
      out += "\\-";
    } else {
      out.push_back(c);
    }
    lineStart = c == '\n';
  }
  return out;
}

std::string Joined(const std::vector<std::string>& words) {
  std::string joined;
  for (const std::string& word : words) joined += (joined.empty() ? "" : " ") + word;
  return joined;
}

}  // namespace

std::string VersionText() { return std::string("nvhost ") + NV_VERSION + " (build " + NV_BUILD + ")"; }

std::string GeneralHelpIntro(bool usesHiveFile) {
  if (usesHiveFile) {
    return "usage: nvhost [--hive FILE] COMMAND [ARGS...]\n\n"
           "The host of the String extraction plug-in over a registry hive (default:\n"
           "$NVEXTCH_HIVE, else $XDG_DATA_HOME/nvextch/hive.db, else ~/.local/share/nvextch/hive.db).\n"
           "Commands that only read never create the hive, a folder or a key.\n\n";
  }
  return "usage: nvhost COMMAND [ARGS...]\n\n"
         "The host of the String extraction plug-in: a COM client of the registered NVextch.dll,\n"
         "over the Windows registry.\n\n";
}

std::vector<std::string> CommandOptions(const Command& command) {
  std::vector<std::string> options;
  const std::string text = std::string(command.usage) + "\n" + command.help;
  for (std::size_t i = 0; i + 2 < text.size(); ++i) {
    if (text.compare(i, 2, "--") != 0 || (i > 0 && IsOptionChar(text[i - 1]))) continue;
    std::size_t end = i + 2;
    while (end < text.size() && IsOptionChar(text[end])) ++end;
    if (end > i + 2 && text[i + 2] != '-') AddOnce(options, text.substr(i, end - i));
    i = end;
  }
  AddOnce(options, "--help");
  return options;
}

std::vector<std::string> CommandVerbs(const Command& command) {
  std::vector<std::string> verbs;
  const std::string usage = command.usage;
  const std::string name = command.name;
  // Each alternative starts with the command's name; a lower-case word after it is a verb,
  // and "add|modify|delete" gives three.
  for (std::size_t at = usage.find(name + " "); at != std::string::npos; at = usage.find(name + " ", at + 1)) {
    if (at != 0 && usage.compare(at - 2, 2, "| ") != 0) continue;
    std::size_t start = at + name.size() + 1;
    std::size_t end = start;
    while (end < usage.size() && usage[end] != ' ') ++end;
    std::istringstream alternatives(usage.substr(start, end - start));
    std::string verb;
    while (std::getline(alternatives, verb, '|')) {
      if (!verb.empty() && std::all_of(verb.begin(), verb.end(), [](char c) { return c >= 'a' && c <= 'z'; }))
        AddOnce(verbs, verb);
    }
  }
  return verbs;
}

void WriteManPage(std::ostream& out, const std::vector<Command>& commands) {
  out << ".TH NVHOST 1 \"\" \"nvhost " << NV_VERSION << "\" \"User Commands\"\n"
      << ".SH NAME\nnvhost \\- the host program of the String extraction task plug-in\n"
      << ".SH SYNOPSIS\n.B nvhost\n[\\fB\\-\\-hive\\fR \\fIFILE\\fR] \\fICOMMAND\\fR [\\fIARGS\\fR...]\n.br\n"
      << ".B nvhost help\n[\\fICOMMAND\\fR]\n.br\n.B nvhost \\-\\-version\n"
      << ".SH DESCRIPTION\n.nf\n" << Roff(GeneralHelpIntro(true)) << ".fi\n"
      << ".SH COMMANDS\n";
  for (const Command& command : commands) {
    out << ".SS " << Roff(command.name) << "\n.nf\n" << Roff(std::string("nvhost ") + command.usage) << "\n\n"
        << Roff(command.help) << ".fi\n";
  }
  out << ".SH EXIT STATUS\n.nf\n" << Roff(help::kExitCodes) << ".fi\n"
      << ".SH ENVIRONMENT\n.TP\n.B NVEXTCH_HIVE\nthe hive file when \\fB\\-\\-hive\\fR is not given\n"
      << ".TP\n.B XDG_DATA_HOME\nthe hive is \\fI$XDG_DATA_HOME/nvextch/hive.db\\fR when neither is given\n"
      << ".SH FILES\n.TP\n.I ~/.local/share/nvextch/hive.db\nthe default hive\n";
}

void WriteBashCompletion(std::ostream& out, const std::vector<Command>& commands) {
  std::vector<std::string> names;
  for (const Command& command : commands) names.emplace_back(command.name);
  out << "# bash completion for nvhost, generated from its help texts\n"
         "_nvhost() {\n"
         "  local cur prev i command=\n"
         "  cur=${COMP_WORDS[COMP_CWORD]}\n"
         "  prev=${COMP_WORDS[COMP_CWORD-1]}\n"
         "  case $prev in\n"
         "    --hive|--file|--output|--report) COMPREPLY=($(compgen -f -- \"$cur\")); return ;;\n"
         "    --lang) COMPREPLY=($(compgen -W 'fr en' -- \"$cur\")); return ;;\n"
         "    --function) COMPREPLY=($(compgen -W 'split substrings find' -- \"$cur\")); return ;;\n"
         "    --trim|--case-sensitive) COMPREPLY=($(compgen -W 'on off' -- \"$cur\")); return ;;\n"
         "    --separator-choice) COMPREPLY=($(compgen -W '0 1 2 3 4 5 6 7 8' -- \"$cur\")); return ;;\n"
         "  esac\n"
         "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
         "    case ${COMP_WORDS[i]} in\n"
         "      --hive) ((i++)) ;;\n"
         "      -*) ;;\n"
         "      *) command=${COMP_WORDS[i]}; break ;;\n"
         "    esac\n"
         "  done\n"
         "  if [[ -z $command ]]; then\n"
         "    COMPREPLY=($(compgen -W '--hive --help --version "
      << Joined(names) << "' -- \"$cur\"))\n"
         "    return\n"
         "  fi\n"
         "  if [[ $cur == -* ]]; then\n"
         "    case $command in\n";
  for (const Command& command : commands) {
    out << "      " << command.name << ") COMPREPLY=($(compgen -W '" << Joined(CommandOptions(command))
        << "' -- \"$cur\")) ;;\n";
  }
  out << "    esac\n"
         "    return\n"
         "  fi\n"
         "  if ((i + 1 == COMP_CWORD)); then\n"
         "    case $command in\n"
         "      help) COMPREPLY=($(compgen -W '"
      << Joined(names) << "' -- \"$cur\")) ;;\n";
  for (const Command& command : commands) {
    const std::vector<std::string> verbs = CommandVerbs(command);
    if (!verbs.empty())
      out << "      " << command.name << ") COMPREPLY=($(compgen -W '" << Joined(verbs) << "' -- \"$cur\")) ;;\n";
  }
  out << "    esac\n"
         "    return\n"
         "  fi\n"
         "  if [[ $command == reg ]]; then COMPREPLY=($(compgen -f -- \"$cur\")); fi\n"
         "}\n"
         "complete -F _nvhost nvhost\n";
}

}  // namespace nv
