#pragma once
// Places a form in the middle of the screen.
#include <cstdint>

#include "dialog/Control.h"
#include "dialog/UiServices.h"

namespace nv {

// Where a length `form` starts when centred in `screen` (twips): each half is taken,
// truncated toward zero, before the subtraction, so odd sizes lose their half twip.
constexpr std::int32_t CentredOffset(std::int32_t screen, std::int32_t form) { return screen / 2 - form / 2; }

void CenterForm(Control& form, UiServices& ui);

}  // namespace nv
