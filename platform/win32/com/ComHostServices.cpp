#include "platform/win32/com/ComHostServices.h"

#include <windows.h>

#include "platform/win32/com/HostClasses.h"

namespace nv::com {

std::unique_ptr<VariablesService> ComHostServices::CreateVariablesService() {
  return MakeVariablesClient(CreateHostObject(kVariablesServiceClass, u"VariablesService"));
}

std::shared_ptr<ReportWriter> ComHostServices::CreateReportWriter() {
  return MakeReportWriterClient(CreateHostObject(kReportWriterClass, u"ReportWriter"));
}

std::unique_ptr<WrapperCatalog> ComHostServices::CreateWrapperCatalog() {
  return MakeWrapperCatalogClient(CreateHostObject(kWrapperCatalogClass, u"WrapperCatalog"));
}

std::unique_ptr<ActionsEditor> ComHostServices::CreateActionsEditor() {
  return MakeActionsEditorClient(CreateHostObject(kActionsEditorClass, u"ActionsEditor"));
}

// A quit request belongs to the host's own loop: it is put back, and the yield ends there.
void ComHostServices::YieldToHost() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace nv::com
