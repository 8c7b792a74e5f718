#pragma once
// The stand-in host's own dialogs for its actions editor: a new action (its kind, flags,
// destination, condition), changes to an action of a given kind, and a help window.
// Built in memory; modal over the calling thread's active window.
#include <cstdint>
#include <memory>

#include "host/ActionValues.h"

namespace nv {

// French texts for the language offset 0, English otherwise.
std::unique_ptr<ActionPrompt> MakeDialogActionPrompt(std::int32_t languageOffset);

// Control identifiers of the action dialog, for tools that drive it.
namespace ActionDialogIds {
constexpr int kKind = 201;
constexpr int kGo = 202;
constexpr int kLoop = 203;
constexpr int kCheck = 204;
constexpr int kDest = 205;
constexpr int kVariable = 206;
constexpr int kOperator = 207;
constexpr int kValue = 208;
constexpr int kHelpText = 209;
}  // namespace ActionDialogIds

}  // namespace nv
