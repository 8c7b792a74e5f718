#pragma once
// The localized texts: every text is asked for by its French identifier; the module's
// LanguageOffset (0 French, 10000 English) picks the language.
#include <cstdint>

#include "common/Text.h"

namespace nv {

// Every text of the string table by name; the value is its French identifier.
enum class TextId : std::int32_t {
#define NV_TEXT(name, id, french, english) name = id,
#include "resources/StringTable.inc"
#undef NV_TEXT
};

namespace Language {
constexpr std::int32_t French = 0;
constexpr std::int32_t English = 10000;
}  // namespace Language

// Reads "Lang" of HKLM\SOFTWARE\NOVRA\Configuration into LanguageOffset, leaving the
// registry context as it found it. A "Lang" that is not a number is raised.
void ReadLanguageSetting();

// The text of identifier + LanguageOffset; a missing one is a resource-not-found error.
Text LoadText(TextId identifier);

}  // namespace nv
