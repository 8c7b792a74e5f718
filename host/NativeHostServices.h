#pragma once
// The host services of nvhost natively: the stand-ins over the module's registry, in the
// language the plug-in has at the moment of each creation.
#include <memory>

#include "host/ActionValues.h"
#include "host/StandInServices.h"

namespace nv {

class NativeHostServices final : public HostServices {
 public:
  NativeHostServices(Registry& registry, ActionPrompt& prompt, ReportFileWriter::LineSink reportFallback)
      : registry_(registry), prompt_(prompt), reportFallback_(std::move(reportFallback)) {}

  std::unique_ptr<VariablesService> CreateVariablesService() override;
  std::shared_ptr<ReportWriter> CreateReportWriter() override;
  std::unique_ptr<WrapperCatalog> CreateWrapperCatalog() override;
  std::unique_ptr<ActionsEditor> CreateActionsEditor() override;
  // Natively no message loop waits on this thread.
  void YieldToHost() override {}

 private:
  Registry& registry_;
  ActionPrompt& prompt_;
  ReportFileWriter::LineSink reportFallback_;
};

}  // namespace nv
