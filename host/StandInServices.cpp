#include "host/StandInServices.h"

#include <ctime>
#include <filesystem>
#include <fstream>

#include "common/Error.h"
#include "common/Utf.h"
#include "host/TaskTypes.h"

namespace nv {
namespace {

std::string ReportStamp() {
  const std::time_t now = std::time(nullptr);
  char stamp[32];
  std::strftime(stamp, sizeof stamp, "%Y-%m-%d %H:%M:%S", std::localtime(&now));
  return stamp;
}

void RaiseUnknownType(std::int16_t wrapperType) {
  RaiseError(ErrorNumber::InvalidProcedureCall, u"Unknown task type " + DecimalText(wrapperType));
}

}  // namespace

Variant VariablesStandIn::GetVariableValue(const Text& scenario, const Text& name) {
  if (auto value = variables_.Get(scenario, name)) return std::move(*value);  // many MiB, perhaps
  RaiseMissing(scenario, name);
}

Variant VariablesStandIn::GetVariableScanned(const Text& scenario, const Text& name, PieceScanner& scanner) {
  if (auto value = variables_.Get(scenario, name, &scanner)) return std::move(*value);
  RaiseMissing(scenario, name);
}

void VariablesStandIn::RaiseMissing(const Text& scenario, const Text& name) const {
  RaiseError(ErrorNumber::HostError2000,
             french_ ? u"La variable " + name + u" n'existe pas dans le scénario " + scenario
                     : u"The variable " + name + u" does not exist in scenario " + scenario);
}

VariablesStandIn::~VariablesStandIn() {
  if (batchOpen_) registry_.CommitBatch();
}

void VariablesStandIn::SetVariableValue(const Text& scenario, const Text& name, TextView value) {
  if (!batchOpen_) {
    registry_.BeginBatch();
    batchOpen_ = true;
  }
  variables_.Set(scenario, name, value);
}

void ReportFileWriter::AddReportLine(TextView line, const HostObjectRef&, std::int32_t level) {
  const std::string text = ReportStamp() + (level == 0 ? " [INFO]  " : " [ERROR] ") +
                           (scenario_.empty() ? std::string() : ToUtf8(scenario_) + ": ") + ToUtf8(line) + "\n";
  if (path_.empty()) {
    fallback_(text);
    return;
  }
  const std::filesystem::path file(path_);
  std::error_code ignored;
  if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path(), ignored);
  // One write of the whole line at the end of the file: a line is never split or lost.
  std::ofstream out(file, std::ios::binary | std::ios::app);
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
  out.flush();
  if (!out) RaiseError(ErrorNumber::HostError2001, u"Cannot write the report file " + path_);
}

Text CatalogStandIn::GetWrapperTitle(std::int16_t wrapperType) {
  if (wrapperType != kStringExtractionTaskType) RaiseUnknownType(wrapperType);
  return french_ ? u"Extraction Chaine" : u"String extraction";
}

Text CatalogStandIn::GetWrapperSummary(std::int16_t wrapperType) {
  if (wrapperType != kStringExtractionTaskType) RaiseUnknownType(wrapperType);
  return french_ ? u"Découpe une chaîne ou la valeur d'une variable et range les morceaux dans des variables du scénario."
                 : u"Cuts a string or a variable's value into pieces and stores them into scenario variables.";
}

}  // namespace nv
