#pragma once
// The system's text: UTF-16 code units, exactly as the host's strings. Positions and
// lengths everywhere count these units.
#include <cstdint>
#include <string>
#include <string_view>

namespace nv {

using Text = std::u16string;
using TextView = std::u16string_view;

// Decimal text of a signed number, as the automation runtime writes it ("-12").
Text DecimalText(std::int64_t value);
// The same at the end of `text`, with no text of its own made.
void AppendDecimal(Text& text, std::int64_t value);

}  // namespace nv
