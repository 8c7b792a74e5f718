#pragma once
// Creates the host's objects, one per use, and lets the host's thread breathe. The platform
// supplies it: COM clients on Windows, the stand-ins of host/ natively.
#include <memory>

#include "engine/VariablesService.h"
#include "plugin/ReportWriter.h"
#include "plugin/WrapperCatalog.h"
#include "store/ActionsEditor.h"

namespace nv {

class HostServices {
 public:
  virtual ~HostServices() = default;
  virtual std::unique_ptr<VariablesService> CreateVariablesService() = 0;
  virtual std::shared_ptr<ReportWriter> CreateReportWriter() = 0;
  virtual std::unique_ptr<WrapperCatalog> CreateWrapperCatalog() = 0;
  virtual std::unique_ptr<ActionsEditor> CreateActionsEditor() = 0;
  // Processes the messages already waiting for the calling thread.
  virtual void YieldToHost() = 0;
};

}  // namespace nv
