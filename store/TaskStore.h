#pragma once
// Loading, saving and status of a task under CurrentSubKey\<task name>.
#include <cstdint>

#include "common/Text.h"
#include "store/TaskDefinition.h"

namespace nv {

void LoadTaskDefinition(TextView taskName, TaskDefinition& definition);
void WriteTaskStatus(TextView taskName, std::int16_t status);
void SaveTask(TextView taskName, const TaskEditorValues& values);

// "Fields(" i ")" + suffix.
Text FieldValueName(std::int32_t index, TextView suffix);
void FieldValueNameInto(std::int32_t index, TextView suffix, Text& name);

}  // namespace nv
