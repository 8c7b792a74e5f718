#pragma once
// The host's variables service as the plug-in uses it: only the members it calls. The
// engine's functions stay pure; execution and the editors reach variables through this.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "common/Text.h"
#include "common/Variant.h"
#include "engine/ExtractPieces.h"
#include "engine/PieceCut.h"

namespace nv {

// A variable's text of which only some stretches were read: the others were never written,
// so that a text of many MiB costs neither the copy nor the fresh memory of what is not used.
// Only the stretches read may be looked at.
class PartlyReadText {
 public:
  explicit PartlyReadText(std::size_t units)
      : units_(std::make_unique_for_overwrite<char16_t[]>(units)), size_(units) {}
  TextView View() const noexcept { return {units_.get(), size_}; }
  char16_t* Data() noexcept { return units_.get(); }
  // The text is now its first `units` units.
  void ShrinkTo(std::size_t units) noexcept { size_ = std::min(size_, units); }

 private:
  std::unique_ptr<char16_t[]> units_;
  std::size_t size_;
};

// Given a text as the scanner saw it whole (its units not to be read), names the stretches of
// it that will be used.
using StretchSelector = std::function<std::vector<UnitSpan>(TextView text, PieceScanner& scanner)>;

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
  // The variable's text read through `scanner`, then only in the stretches that `select`
  // names. Nothing when the service cannot (one that gives values whole), when the value is
  // no long text, or when it cannot be read so: the caller then reads it as usual, with a new
  // scanner, and learns there what is wrong.
  virtual std::optional<PartlyReadText> GetVariablePartly(const Text& scenario, const Text& name,
                                                          PieceScanner& scanner, const StretchSelector& select) {
    static_cast<void>(scenario), static_cast<void>(name), static_cast<void>(scanner), static_cast<void>(select);
    return std::nullopt;
  }
  // The third argument of the host's member is always left out, so it has no place here.
  virtual void SetVariableValue(const Text& scenario, const Text& name, TextView value) = 0;
};

}  // namespace nv
