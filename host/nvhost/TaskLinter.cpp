#include "host/nvhost/TaskLinter.h"

#include "common/CaseMapping.h"
#include "common/Utf.h"
#include "engine/FindValues.h"
#include "engine/PieceCut.h"
#include "host/nvhost/TaskLookup.h"
#include "plugin/VariableAccess.h"

namespace nv {
namespace {

class Findings {
 public:
  void Error(std::string message) { list_.push_back({LintFinding::Severity::Error, std::move(message)}); }
  void Warning(std::string message) { list_.push_back({LintFinding::Severity::Warning, std::move(message)}); }
  std::vector<LintFinding> Take() { return std::move(list_); }

 private:
  std::vector<LintFinding> list_;
};

std::string Quoted(TextView text) { return "\"" + OneLine(text) + "\""; }

void MissingVariable(const char* entry, const Text& text, Findings& findings) {
  findings.Error(std::string("the ") + entry + " refers to " + ToUtf8(text) +
                 ", a variable that does not exist (the run would fail)");
}

// The entry as the run sees it; nothing when it names a variable that does not exist.
std::optional<Text> Resolve(const char* entry, const Text& text, LintVariables& variables, Findings& findings) {
  if (!IsVariableReference(text)) return text;
  if (auto value = variables.Value(text.substr(1))) return value;
  MissingVariable(entry, text, findings);
  return std::nullopt;
}

// The string of a split or a positional task, known by its separators only: a log of many
// MiB is counted as it is read, never held. Nothing when it is missing or when there is no
// separator to count.
std::optional<LintVariables::Separators> CountInString(const Text& chaine, const std::optional<Text>& separator,
                                                       bool chaineExists, LintVariables& variables) {
  if (!chaineExists || !separator || separator->empty()) return std::nullopt;
  if (!IsVariableReference(chaine)) return CountSeparatorsIn(chaine, *separator);
  return variables.CountSeparators(chaine.substr(1), *separator);
}

std::size_t Occurrences(TextView text, TextView needle) {
  if (needle.empty()) return 0;
  std::size_t count = 0;
  for (std::size_t at = text.find(needle); at != TextView::npos; at = text.find(needle, at + needle.size())) ++count;
  return count;
}

void CheckFieldVariables(const TaskDefinition& task, Findings& findings) {
  for (std::size_t i = 0; i < task.Fields.size(); ++i) {
    const Text& var = task.Fields[i].Var;
    const std::string field = "field " + std::to_string(i + 1);
    if (var.empty()) {
      findings.Warning(field + " has no variable: its piece is dropped");
    } else if (!IsVariableReference(var)) {
      findings.Error(field + ": " + Quoted(var) + " has no \"@\": the run would store into the variable " +
                     Quoted(TextView(var).substr(1)));
    }
  }
}

void CheckPieceCount(std::size_t pieces, const TaskDefinition& task, const char* what, Findings& findings) {
  const std::size_t fields = task.Fields.size();
  if (pieces > fields) {
    findings.Error("the input yields " + std::to_string(pieces) + " " + what + " for " + std::to_string(fields) +
                   " fields: the run would fail with error 9 (subscript out of range)");
  } else if (pieces < fields) {
    findings.Warning("the input yields " + std::to_string(pieces) + " " + what + " for " + std::to_string(fields) +
                     " fields: fields " + std::to_string(pieces + 1) + " to " + std::to_string(fields) +
                     " would keep their old values");
  }
}

void CheckSeparator(const std::optional<LintVariables::Separators>& input, const std::optional<Text>& separator,
                    Findings& findings) {
  if (!separator) return;
  if (separator->empty()) {
    findings.Error("the separator is empty");
  } else if (input && !input->emptyText && input->count == 0) {
    findings.Warning("the separator " + Quoted(*separator) + " does not occur in the input: it is one piece");
  }
}

void LintSplit(const TaskDefinition& task, const std::optional<LintVariables::Separators>& input,
               const std::optional<Text>& separator, Findings& findings) {
  CheckSeparator(input, separator, findings);
  if (input) CheckPieceCount(input->count + 1, task, "pieces", findings);
}

void LintSubstrings(const TaskDefinition& task, const std::optional<LintVariables::Separators>& input,
                    const std::optional<Text>& separator, Findings& findings) {
  CheckSeparator(input, separator, findings);
  if (task.Fields.empty()) findings.Warning("the task has no field: the run stores nothing");
}

void LintFind(const TaskDefinition& task, const std::optional<Text>& input, const std::optional<Text>& mask,
              const std::optional<Text>& filter, Findings& findings) {
  if (!mask || !filter) return;
  const bool caseSensitive = task.CaseSensitive == 1;
  if (filter->empty()) {
    findings.Error("the filter is empty: the mask has no placeholder");
    return;
  }
  const Text workMask = caseSensitive ? *mask : UpperCase(*mask);
  const std::size_t placeholders = Occurrences(workMask, *filter);
  if (Occurrences(*mask, *filter) == 0) {
    findings.Error("the filter " + Quoted(*filter) + " does not occur in the mask " + Quoted(*mask));
    return;
  }
  if (placeholders == 0) {
    findings.Error("the filter " + Quoted(*filter) + " is not upper-case: once the mask is upper-cased " +
                   "(case-insensitive mode) it has no placeholder; set case-sensitive on or upper-case the filter");
    return;
  }
  Text doubled = *filter + *filter;
  if (workMask.find(doubled) != Text::npos)
    findings.Warning("two placeholders touch in the mask: the value between them is ambiguous");
  if (!input) return;
  if (input->find(*filter) != Text::npos)
    findings.Warning("the filter text " + Quoted(*filter) + " occurs in the input, where a value is expected");
  Text text = *input;
  Text maskCopy = *mask;
  std::int16_t start = 0;
  std::int16_t end = 0;
  std::vector<TextView> values;
  FindValues(text, maskCopy, *filter, start, end, caseSensitive, task.Trim == 1, values);
  if (values.size() == 1 && placeholders != 1 && values.front().empty()) {
    findings.Warning("the mask does not match the input: the run stores one empty value");
  }
  CheckPieceCount(values.size(), task, "values", findings);
}

}  // namespace

LintVariables::Separators CountSeparatorsIn(TextView text, TextView separator) {
  // A reach of one keeps two separators' places however many the text holds.
  return {PieceCut(text, separator, 1).LastIndex(), text.empty()};
}

std::optional<LintVariables::Separators> LintVariables::CountSeparators(const Text& name, TextView separator) {
  const std::optional<Text> text = Value(name);
  if (!text) return std::nullopt;
  return CountSeparatorsIn(*text, separator);
}

std::vector<LintFinding> LintTask(const TaskDefinition& task, LintVariables& variables) {
  Findings findings;
  const bool cut = task.Fonction == FunctionCode::Split || task.Fonction == FunctionCode::Substrings;
  // A task that cuts its string needs only its separators counted; the others read it whole.
  std::optional<Text> input;
  bool inputExists = true;
  if (cut && IsVariableReference(task.Chaine)) {
    inputExists = variables.Exists(task.Chaine.substr(1));
    if (!inputExists) MissingVariable("string", task.Chaine, findings);
  } else {
    input = Resolve("string", task.Chaine, variables, findings);
  }
  switch (task.Fonction) {
    case FunctionCode::Split:
    case FunctionCode::Substrings: {
      const std::optional<Text> separator = Resolve("separator", task.Separateur, variables, findings);
      const auto separators = CountInString(task.Chaine, separator, inputExists, variables);
      if (task.Fonction == FunctionCode::Split) {
        LintSplit(task, separators, separator, findings);
      } else {
        LintSubstrings(task, separators, separator, findings);
      }
      break;
    }
    case FunctionCode::FindValues:
      LintFind(task, input, Resolve("mask", task.Masque, variables, findings),
               Resolve("filter", task.Filtre, variables, findings), findings);
      break;
    default:
      findings.Error("the function " + std::to_string(task.Fonction) +
                     " is none of split (0), substrings (1), find (2)");
      break;
  }
  CheckFieldVariables(task, findings);
  return findings.Take();
}

const char* SeverityName(LintFinding::Severity severity) {
  return severity == LintFinding::Severity::Error ? "error" : "warning";
}

}  // namespace nv
