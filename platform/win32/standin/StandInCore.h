#pragma once
// The portable stand-ins inside this DLL: its own copy of the core over Windows' registry,
// in the language the host's configuration names.
#include <cstdint>
#include <memory>
#include <string>

#include "host/ActionValues.h"
#include "store/Registry.h"

namespace nv::standin {

// Attaches the registry on first use and reads the configured language, as each new
// object of the host does; an unreadable language setting is raised.
Registry& AttachStandInCore();
std::int32_t CurrentLanguage();

// Report lines that have no file go to the process's standard error, as natively.
void WriteToStandardError(const std::string& utf8Line);

// The actions editor's own dialogs.
std::unique_ptr<ActionPrompt> MakeActionPrompt(std::int32_t languageOffset);

}  // namespace nv::standin
