#pragma once
// The stand-in host keeps scenario variables in the registry: one REG_SZ value per
// variable under HKLM\SOFTWARE\NOVRA\Scenarios\<scenario>\Variables.
#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "common/Text.h"
#include "common/Variant.h"
#include "engine/PieceCut.h"
#include "engine/VariablesService.h"
#include "host/StoredValue.h"
#include "store/Registry.h"
#include "store/RegistryKey.h"

namespace nv {

Text VariablesKeyPath(const Text& scenario);

class ScenarioVariables {
 public:
  explicit ScenarioVariables(Registry& registry) : registry_(registry) {}

  // The value as stored (a text, or a number for a REG_DWORD); nothing when missing. A text
  // goes through `scanner`, when given, as it is read.
  std::optional<Variant> Get(const Text& scenario, const Text& name, PieceScanner* scanner = nullptr) const;
  // Whether the scenario has the variable; its value is not read.
  bool Exists(const Text& scenario, const Text& name) const;
  // A long text, read through `scanner`, then only in the stretches `select` names; nothing
  // when missing, another value, or not to be read so.
  std::optional<PartlyReadText> GetPartly(const Text& scenario, const Text& name, PieceScanner& scanner,
                                          const StretchSelector& select) const;
  // The scenario's variable names in the order they were first written, none read: a log of
  // many MiB among them is not read to be named.
  std::vector<Text> Names(const Text& scenario) const;
  // The value written to `out` as UTF-8 while it is read (see WriteStoredValueAsUtf8);
  // FileNotFound when the scenario has no variables.
  RegStatus WriteAsUtf8(const Text& scenario, const Text& name, Utf8Output& out,
                        Utf8Encoder encode = &AppendUtf8) const;
  // Raises an error carrying the registry's code when the value cannot be written.
  void Set(const Text& scenario, const Text& name, TextView value);
  // The same for a text of `units` units that `make` gives in pieces (see WriteStoredTextMade);
  // an exception from `make` goes through, and nothing is stored.
  void SetMade(const Text& scenario, const Text& name, std::size_t units, const TextMaker& make);

 private:
  void Store(const Text& scenario, const Text& name, const std::function<RegStatus(RegKey)>& write);

  Registry& registry_;
  // The Variables key of the scenario last written, kept open: an execution that stores a
  // thousand pieces then finds the key once, not once a piece.
  Text writtenScenario_;
  UniqueRegKey writtenKey_;
};

}  // namespace nv
