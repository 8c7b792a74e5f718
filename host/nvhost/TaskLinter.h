#pragma once
// What would go wrong in a stored task with the current variable values, found without
// running it: references to missing variables, a mask or filter that cannot match, an input
// that yields more or fewer pieces than the task has fields.
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "common/Text.h"
#include "store/TaskDefinition.h"

namespace nv {

struct LintFinding {
  enum class Severity { Error, Warning };
  Severity severity = Severity::Warning;
  std::string message;  // UTF-8, one line
};

// What the linter reads of the scenario's variables.
class LintVariables {
 public:
  // The value as the run would read it; nothing when the variable does not exist.
  virtual std::optional<Text> Value(const Text& name) = 0;
  virtual bool Exists(const Text& name) { return Value(name).has_value(); }
  // How many times `separator` (not empty) occurs in the variable's text, left to right
  // without overlap, as the run would cut it; nothing when the variable does not exist. Here
  // the value is read whole; a store that can count while it reads need not hold a log of
  // many MiB to say how many lines it has.
  struct Separators {
    std::size_t count = 0;
    bool emptyText = false;
  };
  virtual std::optional<Separators> CountSeparators(const Text& name, TextView separator);

 protected:
  ~LintVariables() = default;
};

// The separators of `text`, counted as the run would cut it.
LintVariables::Separators CountSeparatorsIn(TextView text, TextView separator);

std::vector<LintFinding> LintTask(const TaskDefinition& task, LintVariables& variables);

const char* SeverityName(LintFinding::Severity severity);

}  // namespace nv
