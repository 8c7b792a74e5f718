#pragma once
// The words the renderer shows in its tips, in both languages. They belong to the Windows
// renderer, not to the plug-in, and so stay out of its string table.
#include <cstdint>

namespace nv::win {

struct HintWords {
  const wchar_t* addField;     // the extraction grid's plus button
  const wchar_t* removeField;  // its minus button
  const wchar_t* fieldCount;   // the up-down beside the field count
};

// By the language offset of the localized texts (0 French, 10000 English).
const HintWords& HintWordsFor(std::int32_t languageOffset);

}  // namespace nv::win
