// What the plug-in asks of the host's variables service, member by member, and what
// execution makes of a service that fails in a way no run-time error describes.
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "common/Conversions.h"
#include "common/Utf.h"
#include "plugin/ExtractionChaine.h"
#include "plugin/VariableAccess.h"
#include "store/ModuleState.h"
#include "store/RegistryOperations.h"
#include "store/TaskDefinition.h"
#include "tests/support/HostFixture.h"

namespace nv::test {
namespace {

using CallLog = std::vector<std::string>;

// Hands every call on to the stand-in, after writing it into the log of its instance.
class RecordingVariables final : public VariablesService {
 public:
  RecordingVariables(std::unique_ptr<VariablesService> inner, CallLog& log) : inner_(std::move(inner)), log_(log) {}
  void SetScenarioName(const Text& scenario) override {
    log_.push_back("ScenarioName " + ToUtf8(scenario));
    inner_->SetScenarioName(scenario);
  }
  void SetRegistryRoot(std::int32_t root) override {
    log_.push_back("RegistryRoot " + std::to_string(static_cast<std::uint32_t>(root)));
    inner_->SetRegistryRoot(root);
  }
  void SetRegistrySubKey(const Text& subKey) override {
    log_.push_back("RegistrySubKey " + ToUtf8(subKey));
    inner_->SetRegistrySubKey(subKey);
  }
  Variant GetVariableValue(const Text& scenario, const Text& name) override {
    log_.push_back("Get " + ToUtf8(scenario) + " " + ToUtf8(name));
    return inner_->GetVariableValue(scenario, name);
  }
  void SetVariableValue(const Text& scenario, const Text& name, TextView value) override {
    log_.push_back("Set " + ToUtf8(scenario) + " " + ToUtf8(name) + " " + ToUtf8(value));
    inner_->SetVariableValue(scenario, name, value);
  }

 private:
  std::unique_ptr<VariablesService> inner_;
  CallLog& log_;
};

class HostCalls : public HostTest {
 public:
  void SetUp() override {
    HostTest::SetUp();
    wrapVariablesService = [this](std::unique_ptr<VariablesService> inner) -> std::unique_ptr<VariablesService> {
      return std::make_unique<RecordingVariables>(std::move(inner), uses.emplace_back());
    };
  }

  void ExecuteTask() {
    ExtractionChaine plugin;
    plugin.InitializeProperties(u"T", u"S", 0);
    int completes = 0;
    plugin.OnComplete = [&] { ++completes; };
    plugin.ExecuteTache();
    EXPECT_EQ(completes, 1);
  }

  // One log per instance the plug-in created, in the order of creation. A deque keeps the
  // logs where they are while more are added.
  std::deque<CallLog> uses;
};

TEST_F(HostCalls, EachUseWritesItsMembersInOrder) {
  SetVariable(u"Src", u"x;y");
  PutDword(Reg(), kTask, u"Fonction", 0);
  PutText(Reg(), kTask, u"Chaine", u"@Src");
  PutText(Reg(), kTask, u"Separateur", u";");
  PutDword(Reg(), kTask, u"Fields.Count", 2);
  PutText(Reg(), kTask, u"Fields(1).Var", u"@A");
  PutText(Reg(), kTask, u"Fields(2).Var", u"@B");
  ExecuteTask();
  const std::deque<CallLog> execution = {
      {"RegistryRoot 2147483650", "RegistrySubKey SOFTWARE\\NOVRA\\Scenarios\\S\\Taches", "ScenarioName S",
       "Get S Src"},
      {"ScenarioName S", "Set S A x", "Set S B y"},
  };
  EXPECT_EQ(uses, execution);

  // The registry context is the module's at the moment of the look-up, whoever set it.
  uses.clear();
  SetRegistryContext(static_cast<std::int32_t>(RegRoot::CurrentUser), u"Somewhere\\Else");
  EXPECT_EQ(ToText(ResolveVariable(u"S", u"Src")), u"x;y");
  Variant value;
  EXPECT_TRUE(LookUpVariable(u"S", u"Src", value));
  EXPECT_FALSE(LookUpVariable(u"S", u"Missing", value));
  const std::deque<CallLog> lookUps = {
      {"RegistryRoot 2147483649", "RegistrySubKey Somewhere\\Else", "ScenarioName S", "Get S Src"},
      {"ScenarioName S", "Get S Src"},
      {"ScenarioName S", "Get S Missing"},
  };
  EXPECT_EQ(uses, lookUps);
}

// A service that fails on its first store with whatever the case throws.
class FailingVariables final : public VariablesService {
 public:
  explicit FailingVariables(std::function<void()> fail) : fail_(std::move(fail)) {}
  void SetScenarioName(const Text&) override {}
  void SetRegistryRoot(std::int32_t) override {}
  void SetRegistrySubKey(const Text&) override {}
  Variant GetVariableValue(const Text&, const Text&) override { return Variant::FromText(u""); }
  void SetVariableValue(const Text&, const Text&, TextView) override { fail_(); }

 private:
  std::function<void()> fail_;
};

TEST_F(HostCalls, FailuresThatAreNoRunTimeErrorEndTheRunWithTheirNumber) {
  struct Case {
    const char* what;
    std::function<void()> fail;
    const char16_t* line;
  } const cases[] = {
      {"memory", [] { throw std::bad_alloc(); }, u"Erreur d'exécution N°7 ,Out of memory"},
      {"standard exception", [] { throw std::logic_error("unexpected"); }, u"Erreur d'exécution N°51 ,Internal error"},
      {"anything else", [] { throw 42; }, u"Erreur d'exécution N°51 ,Internal error"},
  };
  PutDword(Reg(), kTask, u"Fonction", 0);
  PutText(Reg(), kTask, u"Chaine", u"a");
  PutDword(Reg(), kTask, u"Fields.Count", 1);
  PutText(Reg(), kTask, u"Fields(1).Var", u"@A");
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    reportLines.clear();
    wrapVariablesService = [&c](std::unique_ptr<VariablesService>) -> std::unique_ptr<VariablesService> {
      return std::make_unique<FailingVariables>(c.fail);
    };
    ExecuteTask();
    EXPECT_EQ(ReadRegistryValue(u"T", u"Etat"), Variant::FromLong(TaskStatus::Failed));
    ASSERT_EQ(reportLines.size(), 2u);
    EXPECT_EQ(reportLines[1].text, c.line);
    EXPECT_EQ(reportLines[1].level, 1);
  }
}

}  // namespace
}  // namespace nv::test
