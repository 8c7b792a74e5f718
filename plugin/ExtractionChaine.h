#pragma once
// The plug-in object that the host creates for each task: its context (the seven
// properties) and the members of its contract. The COM class and nvhost both drive it.
#include <cstdint>
#include <functional>

#include "common/Text.h"
#include "plugin/HostObject.h"
#include "store/TaskDefinition.h"

namespace nv {

class ExtractionChaine {
 public:
  // Reads the language setting, as every new object does.
  ExtractionChaine();
  ~ExtractionChaine();
  ExtractionChaine(const ExtractionChaine&) = delete;
  ExtractionChaine& operator=(const ExtractionChaine&) = delete;

  // The context: plain fields the host reads and writes at will.
  Text Nom;
  std::int32_t Regst = 0;
  Text RegstCle;
  std::int16_t Etat = 0;  // working mode: 1 stored task, 0 new task
  Text Rapport;
  Text Scen;
  HostObjectRef Bouton;

  // Filled by every execution and description.
  TaskDefinition Definition;

  void InitializeProperties(const Text& name, const Text& scenario, std::int32_t language);
  void SetLanguage(std::int32_t language);
  void SetName(const Text& name) { Nom = name; }
  void SetRegistryRoot(std::int32_t root) { Regst = root; }
  void SetRegistrySubKey(const Text& subKey) { RegstCle = subKey; }
  void SetReportFilePath(const Text& path) { Rapport = path; }
  void SetScenario(const Text& scenario) { Scen = scenario; }
  // Outside 16 bits: an overflow error, and Etat keeps its value.
  void SetWorkingMode(std::int32_t mode);

  bool IsTrigger() const { return false; }
  bool IsActionSupported(std::int32_t actionType) const;
  std::int32_t GetStatus();
  std::int32_t GetWrapperType() const { return kWrapperType; }
  std::int32_t GetWorkingMode() const { return Etat; }
  Text GetName() const { return Nom; }

  // Execution: synchronous; errors end in status 3 and a report line, never in the caller.
  void ExecuteTache();
  void RunT(std::int16_t data);
  // A non-zero value executes; zero only raises Complete.
  void Run(std::int16_t data);

  // The Complete event; Progress is never raised. The COM layer and nvhost connect here.
  std::function<void()> OnComplete;

  // Descriptions for the host: the HTML fragment, the actions text, and the task type's
  // title and summary from the host's catalogue.
  Text GetTaskDescription();
  Text GetActions();
  Text GetTitle();
  Text GetSummary();

  // The task dialog, through the platform's presenter. ShowWrapper gives it the type's
  // title and icon and returns the working mode after it; Affiche always returns 0. Both
  // take the dialog's closing (1 confirmed, 0 cancelled) into Etat.
  std::int32_t ShowWrapper();
  std::int16_t Affiche();

  // Points the module's registry context at this object's tasks.
  void UseOwnRegistryContext() const;

 private:
  void RaiseComplete();
};

}  // namespace nv
