#pragma once
// The plug-in as nvhost drives it: linked in natively, the registered COM server on
// Windows. Only what the commands call.
#include <cstdint>

#include "common/Text.h"

namespace nv {

class PluginClient {
 public:
  virtual ~PluginClient() = default;
  virtual void InitializeProperties(const Text& name, const Text& scenario, std::int32_t language) = 0;
  virtual void SetReportFilePath(const Text& path) = 0;
  virtual void SetWorkingMode(std::int32_t mode) = 0;
  // Executes the task as a host does, events and messages included.
  virtual void ExecuteTache() = 0;
  virtual std::int32_t GetStatus() = 0;
  virtual Text GetTaskDescription() = 0;
  virtual Text GetActions() = 0;
  // The task dialog on screen; the working mode after it (1 confirmed, 0 cancelled).
  virtual std::int32_t ShowWrapper() = 0;
};

}  // namespace nv
