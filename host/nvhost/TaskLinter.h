#pragma once
// What would go wrong in a stored task with the current variable values, found without
// running it: references to missing variables, a mask or filter that cannot match, an input
// that yields more or fewer pieces than the task has fields.
#include <functional>
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

// The value of a scenario variable, nothing when it does not exist.
using VariableLookup = std::function<std::optional<Text>(const Text& name)>;

std::vector<LintFinding> LintTask(const TaskDefinition& task, const VariableLookup& lookUp);

const char* SeverityName(LintFinding::Severity severity);

}  // namespace nv
