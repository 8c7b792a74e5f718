#pragma once
// The host's report writer as execution uses it: only the members it calls.
#include <cstdint>

#include "common/Text.h"
#include "plugin/HostObject.h"

namespace nv {

// The level of a report line.
namespace ReportLevel {
constexpr std::int32_t Start = 0;
constexpr std::int32_t Error = 1;
}  // namespace ReportLevel

class ReportWriter {
 public:
  virtual ~ReportWriter() = default;
  virtual void SetReportFilePath(const Text& path) = 0;
  virtual void SetScenarioName(const Text& scenario) = 0;
  virtual void AddReportLine(TextView line, const HostObjectRef& button, std::int32_t level) = 0;
};

}  // namespace nv
