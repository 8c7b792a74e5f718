#include "plugin/ExtractionChaine.h"

#include "common/Conversions.h"
#include "common/Error.h"
#include "plugin/HostModule.h"
#include "store/ActionsLayout.h"
#include "store/ModuleState.h"
#include "store/Registry.h"
#include "store/RegistryOperations.h"
#include "store/Texts.h"

namespace nv {

ExtractionChaine::ExtractionChaine() {
  ReadLanguageSetting();
  // The new writer replaces the module's only once it exists: a creation that fails reaches
  // the caller and leaves the earlier writer in place.
  HostModule().ReportWriterInstance = ModuleServices().CreateReportWriter();
}

// The module's report writer goes with any object that ends; the next execution makes a new one.
ExtractionChaine::~ExtractionChaine() { HostModule().ReportWriterInstance.reset(); }

void ExtractionChaine::InitializeProperties(const Text& name, const Text& scenario, std::int32_t language) {
  Regst = static_cast<std::int32_t>(RegRoot::LocalMachine);
  RegstCle = u"SOFTWARE\\NOVRA\\Scenarios\\" + scenario + u"\\Taches";
  Nom = name;
  Scen = scenario;
  Etat = 1;
  SetLanguage(language);
}

void ExtractionChaine::SetLanguage(std::int32_t language) { Module().LanguageOffset = language; }

void ExtractionChaine::SetWorkingMode(std::int32_t mode) { Etat = ToInteger(Variant::FromLong(mode)); }

bool ExtractionChaine::IsActionSupported(std::int32_t actionType) const {
  // A Goto is refused only to the host's task type 100, an OnDec only to a task that is no
  // trigger: of the two, only the second ever applies to this type.
  constexpr std::int32_t kTypeWithoutGoto = 100;
  const bool trigger = IsTrigger();
  const std::int32_t wrapperType = GetWrapperType();
  return !((actionType == ActionKind::Goto && wrapperType == kTypeWithoutGoto) ||
           (actionType == ActionKind::OnDec && !trigger));
}

std::int32_t ExtractionChaine::GetStatus() {
  UseOwnRegistryContext();
  const Variant status = ReadRegistryValue(Nom, u"Etat");
  return status.IsEmptyText() ? 0 : ToLong(status);
}

void ExtractionChaine::UseOwnRegistryContext() const { SetRegistryContext(Regst, RegstCle); }

}  // namespace nv
