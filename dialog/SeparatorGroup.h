#pragma once
// The separator entry of the split and extraction editors: nine fixed or "other" choices
// over one variable box.
#include <array>
#include <cstddef>
#include <optional>

#include "dialog/SimpleControls.h"
#include "dialog/TextBoxVar.h"

namespace nv {

constexpr std::size_t kSeparateurAutre = 8;

// The separator text of a fixed choice (0 to 7).
TextView TexteSeparateur(std::size_t index);
// The fixed choice whose separator is exactly `separator`, if one is.
std::optional<std::size_t> ChoixSeparateur(TextView separator);

class SeparatorGroup {
 public:
  SeparatorGroup();
  SeparatorGroup(const SeparatorGroup&) = delete;
  SeparatorGroup& operator=(const SeparatorGroup&) = delete;

  // Writing chooses the matching option, "other" when none matches.
  void SetSeparateur(const Text& separator);
  Text Separateur() const { return txtSeparator.GetText(); }

  TextBoxVar txtSeparator;
  Label lblSeparator;
  OptionButtons<9> Separator;
  Button btnCalculeValeurSeparator;
  Label lblResultSeparator;

 protected:
  // Captions of the label and the nine options, in the current language.
  void LegendesSeparateur();

 private:
  void Separator_Click(std::size_t index);
};

}  // namespace nv
