#pragma once
// Text operations counted from 1, as the plain algorithms are written.
#include <cstdint>

#include "common/Text.h"

namespace nv::reference {

std::int64_t Len(const Text& text);
Text Left(const Text& text, std::int64_t count);
Text Right(const Text& text, std::int64_t count);
// `count` units from unit `start`; fewer at the end of the text, none past it. Fails with
// InvalidProcedureCall for a start below 1 or a negative count.
Text Mid(const Text& text, std::int64_t start, std::int64_t count);
Text Mid(const Text& text, std::int64_t start);
// Position of the first occurrence of `needle` in `text` at or after `start`, 0 if none. The
// empty needle is found at `start` when the text goes on there, and nowhere otherwise.
std::int64_t InStr(std::int64_t start, const Text& text, const Text& needle);

}  // namespace nv::reference
