#pragma once
// The localized texts: every text is asked for by its French identifier; the module's
// LanguageOffset (0 French, 10000 English) picks the language.
#include <cstdint>

#include "common/Text.h"

namespace nv {

namespace Language {
constexpr std::int32_t French = 0;
constexpr std::int32_t English = 10000;
}  // namespace Language

// Reads "Lang" of HKLM\SOFTWARE\NOVRA\Configuration into LanguageOffset, leaving the
// registry context as it found it. A "Lang" that is not a number is raised.
void ReadLanguageSetting();

// The text of identifier + LanguageOffset; a missing one is a resource-not-found error.
Text LoadText(std::int32_t identifier);

// The text of an exact identifier of the table, if there is one (resource scripts, tests).
const Text* FindTableText(std::int32_t identifier);

}  // namespace nv
