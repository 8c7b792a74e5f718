#pragma once
// The stand-ins of the host's variables service, report writer and task type catalogue.
#include <functional>
#include <memory>

#include "host/ScenarioVariables.h"
#include "plugin/HostServices.h"

namespace nv {

// Variables in the registry; a missing one is the host's error 2000, naming it. The
// writes of one instance (one execution) land together when it is released: a run that
// is killed leaves every variable old or new, and a thousand fields cost one commit.
class VariablesStandIn final : public VariablesService {
 public:
  VariablesStandIn(Registry& registry, std::int32_t languageOffset)
      : registry_(registry), variables_(registry), french_(languageOffset == 0) {}
  ~VariablesStandIn() override;
  VariablesStandIn(const VariablesStandIn&) = delete;
  VariablesStandIn& operator=(const VariablesStandIn&) = delete;

  void SetScenarioName(const Text&) override {}
  void SetRegistryRoot(std::int32_t) override {}
  void SetRegistrySubKey(const Text&) override {}
  Variant GetVariableValue(const Text& scenario, const Text& name) override;
  Variant GetVariableScanned(const Text& scenario, const Text& name, PieceScanner& scanner) override;
  std::optional<PartlyReadText> GetVariablePartly(const Text& scenario, const Text& name, PieceScanner& scanner,
                                                  const StretchSelector& select) override {
    return variables_.GetPartly(scenario, name, scanner, select);
  }
  void SetVariableValue(const Text& scenario, const Text& name, TextView value) override;

 private:
  // The host's error 2000, naming the variable.
  [[noreturn]] void RaiseMissing(const Text& scenario, const Text& name) const;

  Registry& registry_;
  ScenarioVariables variables_;
  bool french_;
  bool batchOpen_ = false;
};

// Appends each line, stamped with the time and its level, to the report file in UTF-8,
// creating the file and its folder. With no file the lines go to `fallback`.
class ReportFileWriter final : public ReportWriter {
 public:
  using LineSink = std::function<void(const std::string& utf8Line)>;
  explicit ReportFileWriter(LineSink fallback) : fallback_(std::move(fallback)) {}

  void SetReportFilePath(const Text& path) override { path_ = path; }
  void SetScenarioName(const Text& scenario) override { scenario_ = scenario; }
  void AddReportLine(TextView line, const HostObjectRef& button, std::int32_t level) override;

 private:
  LineSink fallback_;
  Text path_;
  Text scenario_;
};

class CatalogStandIn final : public WrapperCatalog {
 public:
  explicit CatalogStandIn(std::int32_t languageOffset) : french_(languageOffset == 0) {}
  Text GetWrapperTitle(std::int16_t wrapperType) override;
  Text GetWrapperSummary(std::int16_t wrapperType) override;

 private:
  bool french_;
};

}  // namespace nv
