#pragma once
// The task dialog opened as its opener opens it, over the stand-in host of scenario S.
#include <memory>

#include "common/Conversions.h"
#include "dialog/FrmExtractionChaine.h"
#include "store/RegistryOperations.h"
#include "tests/dialog/DialogTest.h"

namespace nv::test {

class TaskDialogTest : public DialogTest {
 public:
  std::unique_ptr<FrmExtractionChaine> Open(std::int16_t stored, const Text& name = u"T") {
    auto form = std::make_unique<FrmExtractionChaine>(ui);
    form->TaskStored = stored;
    form->TaskName = name;
    form->ScenarioName = Text(u"S");  // a temporary: GCC 12 warns falsely on assigning the literal here
    form->Load();
    form->Visible = true;
    return form;
  }

  // A stored value of task `task` as the store reads it, as text ("" when missing).
  Text Stored(const Text& task, const Text& value) { return ToText(ReadRegistryValue(task, value)); }
  bool Has(const Text& task, const Text& value) { return GetRaw(Reg(), kTasks + u"\\" + task, value).has_value(); }
};

}  // namespace nv::test
