#include "plugin/VariableAccess.h"

#include <exception>

#include "plugin/HostModule.h"
#include "store/ModuleState.h"

namespace nv {

Variant ResolveVariable(const Text& scenario, const Text& name) {
  const std::unique_ptr<VariablesService> service = ModuleServices().CreateVariablesService();
  service->SetRegistryRoot(static_cast<std::int32_t>(Module().CurrentRoot));
  service->SetRegistrySubKey(Module().CurrentSubKey);
  service->SetScenarioName(scenario);
  return service->GetVariableValue(scenario, name);
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
