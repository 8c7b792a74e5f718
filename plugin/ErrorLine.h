#pragma once
// The line that reports an error: what execution hands the report writer and what the
// extraction editor's preview shows for a field that fails the same way.
#include "common/Error.h"
#include "common/Text.h"

namespace nv {

// The host's own errors 2000 and 2001 by their description alone; any other as text 602,
// the number in signed decimal, " ," and the description.
Text ErrorLine(const ErrorView& error);

}  // namespace nv
