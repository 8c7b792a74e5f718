#pragma once
// Where a scenario's tasks live, and the refusal of a task that does not exist: a typo must
// not create data nor read as a task of function 0 that never ran.
#include <string>
#include <vector>

#include "common/Text.h"
#include "store/Registry.h"
#include "store/TaskDefinition.h"

namespace nv {

Text TasksKeyPath(const Text& scenario);

bool TaskExists(Registry& registry, const Text& scenario, const Text& task);
// Throws NotFoundError "no task SCENARIO\TASK".
void RequireTask(Registry& registry, const std::string& scenario, const std::string& task);

// Points the store at SCENARIO's tasks (the module's registry context).
void UseTasksOf(const std::string& scenario);
// The definition of a task that must exist, as the loader reads it.
TaskDefinition LoadStoredTask(Registry& registry, const std::string& scenario, const std::string& task);

// One line of text: the backslash, CR, LF and tab written as escapes.
std::string OneLine(TextView text);

// The names of the sub-keys of HKLM\path, in the registry's order; none when it is missing.
std::vector<Text> SubKeyNames(Registry& registry, const Text& path);

}  // namespace nv
