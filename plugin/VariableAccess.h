#pragma once
// Scenario variables through the host's variables service, one instance per use.
#include <optional>

#include "common/Text.h"
#include "common/Variant.h"
#include "engine/PieceCut.h"
#include "engine/VariablesService.h"

namespace nv {

// The variable's value, for execution: with the module's registry context; errors of the
// service are raised as they are.
Variant ResolveVariable(const Text& scenario, const Text& name);
// The same, a text going through `scanner` as the service reads it.
Variant ResolveVariable(const Text& scenario, const Text& name, PieceScanner& scanner);

// The variable's long text, read through `scanner` and then only in the stretches `select`
// names; nothing when the service cannot read it so (see GetVariablePartly).
std::optional<PartlyReadText> ResolveVariablePartly(const Text& scenario, const Text& name, PieceScanner& scanner,
                                                    const StretchSelector& select);

// The variable's value, for the dialog: true and `value` set when the service gives one;
// false, `value` untouched and nothing shown on any error.
bool LookUpVariable(const Text& scenario, const Text& name, Variant& value);

// "@Name" stands for the variable Name; any other text for itself.
inline bool IsVariableReference(TextView text) { return !text.empty() && text.front() == u'@'; }

}  // namespace nv
