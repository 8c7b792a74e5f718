#pragma once
// What the three function editors share: the string entry with its value button, the
// clear and preview buttons, the fields grid, the messages and the variable cells.
#include <cstdint>
#include <functional>
#include <initializer_list>

#include "dialog/FlexGrid.h"
#include "dialog/SimpleControls.h"
#include "dialog/TextBoxVar.h"
#include "dialog/UiServices.h"
#include "store/Texts.h"

namespace nv {

// The value an entry's "=" button shows: the variable's value, "N/C" when it cannot be
// read, or the literal itself.
Text ValeurEntree(const Text& scenario, const Text& entry);
// The same for Preview, with the empty text for a variable that cannot be read.
Text ResoutEntree(const Text& scenario, const Text& entry);
// Spaces removed from both ends, as the runtime's Trim does.
Text Rogne(TextView text);

class EditorBase {
 public:
  EditorBase(const EditorBase&) = delete;
  EditorBase& operator=(const EditorBase&) = delete;
  virtual ~EditorBase() = default;

  Text Chaine() const { return txtChaine.GetText(); }
  void SetChaine(const Text& chaine) { txtChaine.SetText(chaine); }

  TextBoxVar txtChaine;
  Label lblChaine;
  Label lblValeurChaine;
  Button btnCalculeValeurChaine;
  Label lblResultatChaine;
  Button btnClear;
  Button btnPreview;
  FlexGrid NovraFlexGrid1;

 protected:
  explicit EditorBase(UiServices& ui);

  // Every box and the grid name variables of this scenario.
  void DonneScenario(const Text& scenario, std::initializer_list<TextBoxVar*> boxes);
  void CalculeValeur(const TextBoxVar& entry, Label& result) const;
  Text Resout(const TextBoxVar& entry) const { return ResoutEntree(scenario_, entry.GetText()); }
  // A failed check: its message, the focus to the control it names, and false.
  bool Echec(TextId message, Control& focus);
  // The grid's edit-check and edit-trim handling, for the cells the editor says hold names.
  void SurveilleCellulesVariables(std::function<bool()> celluleVariable);

  UiServices& ui_;
  Text scenario_;
};

}  // namespace nv
