#pragma once
// Runs the engine and the reference on the same input and describes what each did: its
// failure or its result, with the final value of every in/out argument. The description is
// empty when both did the same. Shared by the differential tests and the fuzzers.
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "common/Text.h"

namespace nv::reference {

std::string CompareSplit(const Text& text, const Text& separator);

// One field of an extraction task; a missing position keeps the value the previous field
// left (the field's text was not a number).
struct FieldCall {
  std::optional<std::int16_t> start;
  std::optional<std::int16_t> end;
  bool showSeparators = false;
};

// The fields in order over one text, as an execution runs them: the engine reuses one cut
// (and is also checked call by call without it), the reference cuts again for every field.
std::string CompareExtractPieces(const Text& text, const Text& separator, std::span<const FieldCall> fields);

std::string CompareFindValues(const Text& text, const Text& mask, const Text& filter, std::int16_t start,
                              std::int16_t end, bool caseSensitive, bool trim);

}  // namespace nv::reference
