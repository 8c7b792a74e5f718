#include "tests/support/HostFixture.h"

#include "common/Conversions.h"
#include "common/Utf.h"
#include "host/ScenarioVariables.h"
#include "plugin/HostModule.h"
#include "store/ModuleState.h"

namespace nv::test {

// The stand-ins, but with a report writer that records instead of writing a file.
class HostTest::Services final : public HostServices {
 public:
  explicit Services(HostTest& test)
      : test_(test), native_(test.Reg(), test.prompt, [](const std::string&) {}) {}

  std::unique_ptr<VariablesService> CreateVariablesService() override {
    std::unique_ptr<VariablesService> service = native_.CreateVariablesService();
    return test_.wrapVariablesService ? test_.wrapVariablesService(std::move(service)) : std::move(service);
  }
  std::unique_ptr<WrapperCatalog> CreateWrapperCatalog() override { return native_.CreateWrapperCatalog(); }
  std::unique_ptr<ActionsEditor> CreateActionsEditor() override { return native_.CreateActionsEditor(); }
  void YieldToHost() override {}
  std::shared_ptr<ReportWriter> CreateReportWriter() override {
    if (test_.reportWriterFailure) throw *test_.reportWriterFailure;
    ++test_.reportWritersMade;
    return std::make_shared<Recorder>(test_.reportLines);
  }

 private:
  class Recorder final : public ReportWriter {
   public:
    explicit Recorder(std::vector<ReportLine>& lines) : lines_(lines) {}
    void SetReportFilePath(const Text& path) override { path_ = ToUtf8(path); }
    void SetScenarioName(const Text& scenario) override { scenario_ = ToUtf8(scenario); }
    void AddReportLine(TextView line, const HostObjectRef&, std::int32_t level) override {
      lines_.push_back({Text(line), level, scenario_, path_});
    }

   private:
    std::vector<ReportLine>& lines_;
    std::string scenario_;
    std::string path_;
  };

  HostTest& test_;
  NativeHostServices native_;
};

void HostTest::SetUp() {
  TaskContextTest::SetUp();
  services_ = std::make_unique<Services>(*this);
  HostModule().PlatformServices = services_.get();
}

void HostTest::TearDown() {
  TaskContextTest::TearDown();
  services_.reset();
}

std::optional<Text> HostTest::Variable(const Text& name) {
  const auto value = ScenarioVariables(Reg()).Get(u"S", name);
  return value ? std::optional<Text>(ToText(*value)) : std::nullopt;
}

void HostTest::SetVariable(const Text& name, const Text& value) { ScenarioVariables(Reg()).Set(u"S", name, value); }

}  // namespace nv::test
