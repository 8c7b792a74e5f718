#include "platform/win32/dialog/HintWords.h"

namespace nv::win {

const HintWords& HintWordsFor(std::int32_t languageOffset) {
  static const HintWords french{L"Ajouter un champ (Ctrl+Plus)", L"Retirer le dernier champ (Ctrl+Moins)",
                                L"Ajouter ou retirer un champ (flèches Haut et Bas)"};
  static const HintWords english{L"Add a field (Ctrl+Plus)", L"Remove the last field (Ctrl+Minus)",
                                 L"Add or remove a field (Up and Down arrows)"};
  return languageOffset == 0 ? french : english;
}

}  // namespace nv::win
