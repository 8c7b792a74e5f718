#include "host/NativeHostServices.h"

#include "host/RegistryActionsEditor.h"
#include "store/ModuleState.h"

namespace nv {

std::unique_ptr<VariablesService> NativeHostServices::CreateVariablesService() {
  return std::make_unique<VariablesStandIn>(registry_, Module().LanguageOffset);
}

std::shared_ptr<ReportWriter> NativeHostServices::CreateReportWriter() {
  return std::make_shared<ReportFileWriter>(reportFallback_);
}

std::unique_ptr<WrapperCatalog> NativeHostServices::CreateWrapperCatalog() {
  return std::make_unique<CatalogStandIn>(Module().LanguageOffset);
}

std::unique_ptr<ActionsEditor> NativeHostServices::CreateActionsEditor() {
  return std::make_unique<RegistryActionsEditor>(registry_, Module().LanguageOffset, prompt_);
}

}  // namespace nv
