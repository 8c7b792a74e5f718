#include "plugin/VariableAccess.h"

#include <exception>

#include "plugin/HostModule.h"
#include "store/ModuleState.h"

namespace nv {

namespace {

std::unique_ptr<VariablesService> ServiceInContext(const Text& scenario) {
  std::unique_ptr<VariablesService> service = ModuleServices().CreateVariablesService();
  service->SetRegistryRoot(static_cast<std::int32_t>(Module().CurrentRoot));
  service->SetRegistrySubKey(Module().CurrentSubKey);
  service->SetScenarioName(scenario);
  return service;
}

}  // namespace

Variant ResolveVariable(const Text& scenario, const Text& name) {
  return ServiceInContext(scenario)->GetVariableValue(scenario, name);
}

Variant ResolveVariable(const Text& scenario, const Text& name, PieceScanner& scanner) {
  return ServiceInContext(scenario)->GetVariableScanned(scenario, name, scanner);
}

std::optional<PartlyReadText> ResolveVariablePartly(const Text& scenario, const Text& name, PieceScanner& scanner,
                                                    const StretchSelector& select) {
  return ServiceInContext(scenario)->GetVariablePartly(scenario, name, scanner, select);
}

bool LookUpVariable(const Text& scenario, const Text& name, Variant& value) {
  try {
    const std::unique_ptr<VariablesService> service = ModuleServices().CreateVariablesService();
    service->SetScenarioName(scenario);
    value = service->GetVariableValue(scenario, name);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace nv
