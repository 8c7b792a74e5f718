#include "host/nvhost/OptionsActionPrompt.h"

#include <ostream>

#include "common/Utf.h"

namespace nv {

void OptionsActionPrompt::ShowHelp(const Text& helpText) { out_ << ToUtf8(helpText) << "\n"; }

}  // namespace nv
