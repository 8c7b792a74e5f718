#pragma once
// Where a scenario's tasks live, and the refusal of a task that does not exist: a typo must
// not create data nor read as a task of function 0 that never ran.
#include <string>
#include <vector>

#include "common/Text.h"
#include "store/Registry.h"

namespace nv {

Text TasksKeyPath(const Text& scenario);

bool TaskExists(Registry& registry, const Text& scenario, const Text& task);
// Throws NotFoundError "no task SCENARIO\TASK".
void RequireTask(Registry& registry, const std::string& scenario, const std::string& task);

// The names of the sub-keys of HKLM\path, in the registry's order; none when it is missing.
std::vector<Text> SubKeyNames(Registry& registry, const Text& path);

}  // namespace nv
