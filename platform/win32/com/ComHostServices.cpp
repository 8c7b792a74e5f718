#include "platform/win32/com/ComHostServices.h"

#include "platform/win32/com/HostClasses.h"
#include "platform/win32/com/MessagePump.h"

namespace nv::com {

std::unique_ptr<VariablesService> ComHostServices::CreateVariablesService() { return CreateVariablesClient(); }
std::shared_ptr<ReportWriter> ComHostServices::CreateReportWriter() { return CreateReportWriterClient(); }
std::unique_ptr<WrapperCatalog> ComHostServices::CreateWrapperCatalog() { return CreateWrapperCatalogClient(); }
std::unique_ptr<ActionsEditor> ComHostServices::CreateActionsEditor() { return CreateActionsEditorClient(); }

void ComHostServices::YieldToHost() { PumpWaitingMessages(); }

}  // namespace nv::com
