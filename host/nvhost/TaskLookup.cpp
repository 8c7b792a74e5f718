#include "host/nvhost/TaskLookup.h"

#include "common/Utf.h"
#include "host/nvhost/ExitCodes.h"
#include "store/ModuleState.h"
#include "store/RegistryKey.h"
#include "store/TaskStore.h"

namespace nv {

Text TasksKeyPath(const Text& scenario) { return u"SOFTWARE\\NOVRA\\Scenarios\\" + scenario + u"\\Taches"; }

bool TaskExists(Registry& registry, const Text& scenario, const Text& task) {
  // An empty name or one with a backslash would name the Taches key itself or a key below a task.
  if (task.empty() || task.find(u'\\') != Text::npos || scenario.empty() || scenario.find(u'\\') != Text::npos)
    return false;
  UniqueRegKey key;
  return OpenUniqueKey(registry, RegRoot::LocalMachine, TasksKeyPath(scenario) + u"\\" + task, RegAccess::Read,
                       key) == RegError::Success;
}

void RequireTask(Registry& registry, const std::string& scenario, const std::string& task) {
  if (!TaskExists(registry, FromUtf8(scenario), FromUtf8(task)))
    throw NotFoundError("no task " + scenario + "\\" + task);
}

void UseTasksOf(const std::string& scenario) {
  SetRegistryContext(static_cast<std::int32_t>(RegRoot::LocalMachine), TasksKeyPath(FromUtf8(scenario)));
}

TaskDefinition LoadStoredTask(Registry& registry, const std::string& scenario, const std::string& task) {
  const ReadingScope reading(registry);
  RequireTask(registry, scenario, task);
  UseTasksOf(scenario);
  TaskDefinition definition;
  LoadTaskDefinition(FromUtf8(task), definition);
  return definition;
}

std::string OneLine(TextView text) {
  Text shown;
  for (const char16_t c : text) {
    if (c == u'\\') {
      shown += u"\\\\";
    } else if (c == u'\r') {
      shown += u"\\r";
    } else if (c == u'\n') {
      shown += u"\\n";
    } else if (c == u'\t') {
      shown += u"\\t";
    } else {
      shown.push_back(c);
    }
  }
  return ToUtf8(shown);
}

std::vector<Text> SubKeyNames(Registry& registry, const Text& path) {
  std::vector<Text> names;
  const ReadingScope reading(registry);
  UniqueRegKey key;
  if (OpenUniqueKey(registry, RegRoot::LocalMachine, path, RegAccess::Read, key) != RegError::Success) return names;
  Text name;
  for (std::uint32_t index = 0; registry.EnumKey(key.Get(), index, name) == RegError::Success; ++index)
    names.push_back(name);
  return names;
}

}  // namespace nv
