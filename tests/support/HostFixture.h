#pragma once
// A registry plus the stand-in host services, with the report lines and Complete events
// recorded for the test to read.
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "common/Error.h"
#include "host/NativeHostServices.h"
#include "tests/support/TestRegistry.h"

namespace nv::test {

struct ReportLine {
  Text text;
  std::int32_t level;
  std::string scenario;
  std::string path;
};

class ScriptedPrompt final : public ActionPrompt {
 public:
  std::optional<ActionValues> answer;
  std::vector<Text> helpShown;
  std::optional<ActionValues> AskNewAction() override { return answer; }
  std::optional<ActionValues> AskChanges(std::int32_t) override { return answer; }
  void ShowHelp(const Text& text) override { helpShown.push_back(text); }
};

class HostTest : public TaskContextTest {
 public:
  void SetUp() override;
  void TearDown() override;

  const Text kVariables = u"SOFTWARE\\NOVRA\\Scenarios\\S\\Variables";

  // A scenario variable as the stand-in host keeps it; nothing when missing.
  std::optional<Text> Variable(const Text& name);
  void SetVariable(const Text& name, const Text& value);

  // When set, every variables service the plug-in asks for is the stand-in's handed through it.
  std::function<std::unique_ptr<VariablesService>(std::unique_ptr<VariablesService>)> wrapVariablesService;

  std::vector<ReportLine> reportLines;
  int reportWritersMade = 0;
  // When set, the host's report writer cannot be made: creating one raises this error.
  std::optional<RuntimeError> reportWriterFailure;
  ScriptedPrompt prompt;

 private:
  class Services;
  std::unique_ptr<HostServices> services_;
};

}  // namespace nv::test
