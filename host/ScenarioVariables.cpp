#include "host/ScenarioVariables.h"

#include "common/Error.h"
#include "host/StoredValue.h"
#include "common/Utf.h"
#include "store/RegistryKey.h"
#include "store/RegistryStatusText.h"

namespace nv {

Text VariablesKeyPath(const Text& scenario) { return u"SOFTWARE\\NOVRA\\Scenarios\\" + scenario + u"\\Variables"; }

std::optional<Variant> ScenarioVariables::Get(const Text& scenario, const Text& name, PieceScanner* scanner) const {
  const ReadingScope reading(registry_);
  UniqueRegKey key;
  if (OpenUniqueKey(registry_, RegRoot::LocalMachine, VariablesKeyPath(scenario), RegAccess::QueryValue, key) !=
      RegError::Success) {
    return std::nullopt;
  }
  return ReadStoredValue(registry_, key.Get(), name, scanner);
}

std::optional<PartlyReadText> ScenarioVariables::GetPartly(const Text& scenario, const Text& name,
                                                           PieceScanner& scanner, const StretchSelector& select) const {
  const ReadingScope reading(registry_);
  UniqueRegKey key;
  if (OpenUniqueKey(registry_, RegRoot::LocalMachine, VariablesKeyPath(scenario), RegAccess::QueryValue, key) !=
      RegError::Success) {
    return std::nullopt;
  }
  return ReadStoredTextPartly(registry_, key.Get(), name, scanner, select);
}

std::vector<Text> ScenarioVariables::Names(const Text& scenario) const {
  const ReadingScope reading(registry_);
  std::vector<Text> names;
  UniqueRegKey key;
  if (OpenUniqueKey(registry_, RegRoot::LocalMachine, VariablesKeyPath(scenario), RegAccess::QueryValue, key) ==
      RegError::Success) {
    registry_.VisitValues(key.Get(), 0, [&](const VisitedValue& value) { names.emplace_back(value.name); });
  }
  return names;
}

RegStatus ScenarioVariables::WriteAsUtf8(const Text& scenario, const Text& name, Utf8Output& out) const {
  const ReadingScope reading(registry_);
  UniqueRegKey key;
  const RegStatus status =
      OpenUniqueKey(registry_, RegRoot::LocalMachine, VariablesKeyPath(scenario), RegAccess::QueryValue, key);
  if (status != RegError::Success) return status;
  return WriteStoredValueAsUtf8(registry_, key.Get(), name, out);
}

void ScenarioVariables::Set(const Text& scenario, const Text& name, TextView value) {
  UniqueRegKey key;
  RegStatus status =
      CreateUniqueKey(registry_, RegRoot::LocalMachine, VariablesKeyPath(scenario), RegAccess::ReadWrite, key);
  if (status == RegError::Success) status = WriteStoredText(registry_, key.Get(), name, value);
  if (status != RegError::Success) {
    RaiseError(status, u"Cannot store the variable " + name + u" of scenario " + scenario + u" (" +
                           FromUtf8(RegistryStatusText(status)) + u")");
  }
}

}  // namespace nv
