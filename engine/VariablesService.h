#pragma once
// The host's variables service as the plug-in uses it: only the members it calls. The
// engine's functions stay pure; execution and the editors reach variables through this.
#include <cstdint>

#include "common/Text.h"
#include "common/Variant.h"
#include "engine/PieceCut.h"

namespace nv {

class VariablesService {
 public:
  virtual ~VariablesService() = default;
  virtual void SetScenarioName(const Text& scenario) = 0;
  virtual void SetRegistryRoot(std::int32_t root) = 0;
  virtual void SetRegistrySubKey(const Text& subKey) = 0;
  virtual Variant GetVariableValue(const Text& scenario, const Text& name) = 0;
  // The same, with a text's separators found by `scanner` while the service reads it in
  // pieces. A service that gives the value whole leaves the scanner unused; the cut made from
  // it then scans the text itself.
  virtual Variant GetVariableScanned(const Text& scenario, const Text& name, PieceScanner& scanner) {
    static_cast<void>(scanner);
    return GetVariableValue(scenario, name);
  }
  // The third argument of the host's member is always left out, so it has no place here.
  virtual void SetVariableValue(const Text& scenario, const Text& name, TextView value) = 0;
};

}  // namespace nv
