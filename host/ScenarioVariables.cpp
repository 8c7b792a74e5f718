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

bool ScenarioVariables::Exists(const Text& scenario, const Text& name) const {
  UniqueRegKey key;
  if (OpenUniqueKey(registry_, RegRoot::LocalMachine, VariablesKeyPath(scenario), RegAccess::QueryValue, key) !=
      RegError::Success) {
    return false;
  }
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  return registry_.QueryValue(key.Get(), name, &type, nullptr, &size) == RegError::Success;
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

RegStatus ScenarioVariables::WriteAsUtf8(const Text& scenario, const Text& name, Utf8Output& out,
                                         Utf8Encoder encode) const {
  const ReadingScope reading(registry_);
  UniqueRegKey key;
  const RegStatus status =
      OpenUniqueKey(registry_, RegRoot::LocalMachine, VariablesKeyPath(scenario), RegAccess::QueryValue, key);
  if (status != RegError::Success) return status;
  return WriteStoredValueAsUtf8(registry_, key.Get(), name, out, encode);
}

void ScenarioVariables::Set(const Text& scenario, const Text& name, TextView value) {
  Store(scenario, name, [&](RegKey key) { return WriteStoredText(registry_, key, name, value); });
}

void ScenarioVariables::SetMade(const Text& scenario, const Text& name, std::size_t units, const TextMaker& make) {
  Store(scenario, name, [&](RegKey key) { return WriteStoredTextMade(registry_, key, name, units, make); });
}

void ScenarioVariables::Store(const Text& scenario, const Text& name, const std::function<RegStatus(RegKey)>& write) {
  RegStatus status = RegError::Success;
  // A key kept open may have been deleted since (the scenario removed and made again): it is
  // then looked up anew, once.
  for (int attempt = 0; attempt < 2; ++attempt) {
    if (!writtenKey_ || writtenScenario_ != scenario) {
      writtenKey_.Reset();
      status = CreateUniqueKey(registry_, RegRoot::LocalMachine, VariablesKeyPath(scenario), RegAccess::ReadWrite,
                               writtenKey_);
      if (status != RegError::Success) break;
      writtenScenario_ = scenario;
    }
    status = write(writtenKey_.Get());
    if (status != RegError::KeyDeleted) break;
    writtenKey_.Reset();
  }
  if (status != RegError::Success) {
    RaiseError(status, u"Cannot store the variable " + name + u" of scenario " + scenario + u" (" +
                           FromUtf8(RegistryStatusText(status)) + u")");
  }
}

}  // namespace nv
