#include "dialog/SeparatorGroup.h"

#include <iterator>

#include "store/Texts.h"

namespace nv {
namespace {

constexpr std::array<TextView, kSeparateurAutre> kSeparateurs = {u",", u";", u":", u" ", u"\t",
                                                                  u"\r", u"\n", u"\r\n"};

}  // namespace

TextView TexteSeparateur(std::size_t index) { return kSeparateurs.at(index); }

std::optional<std::size_t> ChoixSeparateur(TextView separator) {
  // Exact comparison: CR LF is never taken for CR.
  for (std::size_t i = 0; i < kSeparateurs.size(); ++i) {
    if (kSeparateurs[i] == separator) return i;
  }
  return std::nullopt;
}

SeparatorGroup::SeparatorGroup() {
  btnCalculeValeurSeparator.Caption = Text(u"=");
  btnCalculeValeurSeparator.Enabled = false;
  Separator.OnClick = [this](std::size_t index) { Separator_Click(index); };
}

void SeparatorGroup::LegendesSeparateur() {
  lblSeparator.Caption = LoadText(TextId::SeparatorLabel);
  constexpr TextId kNamedChoices[] = {TextId::CommaChoice, TextId::SemicolonChoice, TextId::ColonChoice,
                                      TextId::SpaceChoice, TextId::TabChoice};
  for (std::size_t i = 0; i < std::size(kNamedChoices); ++i) Separator.Captions[i] = LoadText(kNamedChoices[i]);
  Separator.Captions[5] = Text(u"CR");
  Separator.Captions[6] = Text(u"LF");
  Separator.Captions[7] = Text(u"CR LF");
  Separator.Captions[kSeparateurAutre] = LoadText(TextId::OtherChoice);
}

void SeparatorGroup::Separator_Click(std::size_t index) {
  btnCalculeValeurSeparator.Enabled = false;
  txtSeparator.Editable = false;
  lblResultSeparator.Caption.clear();
  if (index < kSeparateurAutre) {
    txtSeparator.SetText(Text(kSeparateurs[index]));
  } else {
    btnCalculeValeurSeparator.Enabled = true;
    txtSeparator.Editable = true;
  }
}

void SeparatorGroup::SetSeparateur(const Text& separator) {
  txtSeparator.SetText(separator);
  const auto fixed = ChoixSeparateur(separator);
  if (fixed) {
    Separator.Choose(*fixed);
  } else {
    Separator.Choose(kSeparateurAutre);
    txtSeparator.Editable = true;
    btnCalculeValeurSeparator.Enabled = true;
  }
}

}  // namespace nv
