#pragma once
// The three functions of the engine, each written as the plain sequence of steps that
// defines it: repeated cutting of the remaining text, copies everywhere. Slow on purpose;
// the fast engine must give exactly the same results and failures.
#include <cstdint>
#include <vector>

#include "common/Text.h"

namespace nv::reference {

void SplitBySeparator(Text& text, const Text& separator, std::vector<Text>& pieces);

Text ExtractPieces(const Text& text, const Text& separator, std::int16_t& start, std::int16_t& end,
                   bool showSeparators);

std::vector<Text> SplitMask(const Text& mask, const Text& filter);
bool MatchMask(Text text, Text workText, const std::vector<Text>& literalParts, bool trim, std::vector<Text>& values);
void FindValues(Text& text, Text& mask, const Text& filter, std::int16_t& start, std::int16_t& end, bool caseSensitive,
                bool trim, std::vector<Text>& values);

}  // namespace nv::reference
