#pragma once
// The host's four classes as this DLL calls them: created by class identifier, then called
// through their dual interfaces at the slots the host's tables give (widl's header of
// resources/HostInterfaces.idl). A creation or call that fails raises its HRESULT.
#include <memory>

#include "plugin/HostServices.h"

namespace nv::com {

std::unique_ptr<VariablesService> CreateVariablesClient();
std::shared_ptr<ReportWriter> CreateReportWriterClient();
std::unique_ptr<WrapperCatalog> CreateWrapperCatalogClient();
std::unique_ptr<ActionsEditor> CreateActionsEditorClient();

}  // namespace nv::com
