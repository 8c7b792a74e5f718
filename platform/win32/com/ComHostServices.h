#pragma once
// The host's services inside the host's process: its classes are created through COM by
// their class identifiers, and yielding processes the thread's waiting messages.
#include <memory>

#include "plugin/HostServices.h"

namespace nv::com {

class ComHostServices final : public HostServices {
 public:
  std::unique_ptr<VariablesService> CreateVariablesService() override;
  std::shared_ptr<ReportWriter> CreateReportWriter() override;
  std::unique_ptr<WrapperCatalog> CreateWrapperCatalog() override;
  std::unique_ptr<ActionsEditor> CreateActionsEditor() override;
  void YieldToHost() override;
};

}  // namespace nv::com
