#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/Utf.h"
#include "host/ActionValues.h"
#include "plugin/HostModule.h"
#include "store/ActionsLayout.h"
#include "tests/dialog/TaskDialogTest.h"

namespace nv::test {
namespace {

// The stand-in actions editor with every call written to a log, creation and release included.
class LoggedEditor final : public ActionsEditor {
 public:
  LoggedEditor(std::unique_ptr<ActionsEditor> inner, std::vector<std::string>& log) : inner_(std::move(inner)), log_(log) {
    log_.push_back("create");
  }
  ~LoggedEditor() override { log_.push_back("release"); }
  void SetScenarioName(const Text& s) override { log_.push_back("ScenarioName=" + ToUtf8(s)); inner_->SetScenarioName(s); }
  void SetTaskName(const Text& t) override { log_.push_back("TaskName=" + ToUtf8(t)); inner_->SetTaskName(t); }
  void SetRegistryRoot(std::int32_t r) override { log_.push_back("RegistryRoot"); inner_->SetRegistryRoot(r); }
  void SetRegistrySubKey(const Text& k) override { log_.push_back("RegistrySubKey"); inner_->SetRegistrySubKey(k); }
  void SetMode(std::int32_t m) override { log_.push_back("Mode=" + std::to_string(m)); inner_->SetMode(m); }
  void ShowHelp(std::int32_t w) override { log_.push_back("ShowHelp"); inner_->ShowHelp(w); }
  void ModifyAction(Text& c, Text& v, Text& x, std::int32_t type) override {
    log_.push_back("ModifyAction " + std::to_string(type));
    inner_->ModifyAction(c, v, x, type);
  }
  void AddAction() override { log_.push_back("AddAction"); inner_->AddAction(); }
  void DeleteAction(std::int32_t type) override {
    log_.push_back("DeleteAction " + std::to_string(type));
    inner_->DeleteAction(type);
  }
  void NextAction(ListedAction& a, std::int32_t& cursor) override { inner_->NextAction(a, cursor); }

 private:
  std::unique_ptr<ActionsEditor> inner_;
  std::vector<std::string>& log_;
};

class LoggedServices final : public HostServices {
 public:
  LoggedServices(HostServices& inner, std::vector<std::string>& log) : inner_(inner), log_(log) {}
  std::unique_ptr<VariablesService> CreateVariablesService() override { return inner_.CreateVariablesService(); }
  std::shared_ptr<ReportWriter> CreateReportWriter() override { return inner_.CreateReportWriter(); }
  std::unique_ptr<WrapperCatalog> CreateWrapperCatalog() override { return inner_.CreateWrapperCatalog(); }
  std::unique_ptr<ActionsEditor> CreateActionsEditor() override {
    return std::make_unique<LoggedEditor>(inner_.CreateActionsEditor(), log_);
  }
  void YieldToHost() override {}

 private:
  HostServices& inner_;
  std::vector<std::string>& log_;
};

class ActionsTabTest : public TaskDialogTest {
 public:
  void SetUp() override {
    TaskDialogTest::SetUp();
    PutDword(Reg(), kTask, u"Fonction", 0);
    standIn_ = HostModule().PlatformServices;
    logged_ = std::make_unique<LoggedServices>(*standIn_, log);
    HostModule().PlatformServices = logged_.get();
  }
  void TearDown() override {
    HostModule().PlatformServices = standIn_;
    TaskDialogTest::TearDown();
  }

  void Add(std::int32_t kind, std::uint32_t go) {
    ActionValues values;
    values.kind = kind;
    values.go = go;
    prompt.answer = values;
    form->Actions.cmdAcA.Click();
  }

  std::vector<std::string> log;
  std::unique_ptr<FrmExtractionChaine> form;
  const std::vector<std::string> kPrefix = {"create", "RegistryRoot", "RegistrySubKey"};

 private:
  HostServices* standIn_ = nullptr;
  std::unique_ptr<LoggedServices> logged_;
};

std::vector<std::string> Calls(std::vector<std::string> prefix, std::initializer_list<std::string> rest) {
  prefix.insert(prefix.end(), rest);
  return prefix;
}

TEST_F(ActionsTabTest, StoredTaskWithoutActionsHasAnEmptyGridAndInertButtons) {
  form = Open(1);
  StandardGrid& grid = form->Actions.grdAc;
  EXPECT_EQ(grid.Rows(), 2);
  EXPECT_EQ(grid.Cols(), 4);
  EXPECT_EQ(grid.TextMatrix(0, 1), u"Run scenario");
  EXPECT_EQ(grid.TextMatrix(0, 3), u"Value");
  EXPECT_EQ(grid.ColWidth(2), 2900);
  EXPECT_EQ(grid.Row(), 1);
  EXPECT_EQ(log, Calls(kPrefix, {"Mode=0", "TaskName=T", "ScenarioName=S", "release"}));
  log.clear();
  form->Actions.cmdAcM.Click();
  form->Actions.cmdAcS.Click();
  EXPECT_TRUE(log.empty());
}

TEST_F(ActionsTabTest, NewTaskButtonsDoNothing) {
  form = Open(0);
  prompt.answer = ActionValues{};
  for (Button* button : {&form->Actions.cmdAcA, &form->Actions.cmdAcM, &form->Actions.cmdAcS}) button->Click();
  EXPECT_TRUE(log.empty());
}

TEST_F(ActionsTabTest, AddGrowsTheGridWithTypeCodesAsRowData) {
  form = Open(1);
  log.clear();
  Add(ActionKind::OnErr, 1);
  EXPECT_EQ(log, Calls(Calls(kPrefix, {"TaskName=T", "ScenarioName=S", "AddAction", "release"}),
                       {"create", "RegistryRoot", "RegistrySubKey", "Mode=0", "TaskName=T", "ScenarioName=S", "release"}));
  Add(ActionKind::Goto, 0);
  StandardGrid& grid = form->Actions.grdAc;
  ASSERT_EQ(grid.Rows(), 3);
  EXPECT_EQ(grid.RowData(1), ActionKind::OnErr);
  EXPECT_EQ(grid.RowData(2), ActionKind::Goto);
  EXPECT_FALSE(grid.TextMatrix(1, 0).empty());
  EXPECT_FALSE(grid.TextMatrix(2, 1).empty());
}

TEST_F(ActionsTabTest, ModifyRewritesColumnsOneToThreeOfTheCurrentRowOnly) {
  form = Open(1);
  Add(ActionKind::OnErr, 0);
  Add(ActionKind::OnDec, 0);
  StandardGrid& grid = form->Actions.grdAc;
  grid.SetTextMatrix(1, 0, u"label kept");
  grid.SetTextMatrix(2, 1, u"other row kept");
  const Text before = grid.TextMatrix(1, 1);
  grid.SetRow(1);
  ActionValues changes;
  changes.go = 1;
  prompt.answer = changes;
  log.clear();
  form->Actions.cmdAcM.Click();
  EXPECT_EQ(log, Calls(kPrefix, {"Mode=0", "TaskName=T", "ScenarioName=S", "ModifyAction 0", "release"}));
  EXPECT_EQ(grid.TextMatrix(1, 0), u"label kept");
  EXPECT_NE(grid.TextMatrix(1, 1), before);
  EXPECT_EQ(grid.TextMatrix(2, 1), u"other row kept");
}

TEST_F(ActionsTabTest, DeleteOfTheOnlyActionShrinksTheGrid) {
  form = Open(1);
  Add(ActionKind::ExeIf, 0);
  StandardGrid& grid = form->Actions.grdAc;
  grid.SetRow(1);
  log.clear();
  form->Actions.cmdAcS.Click();
  EXPECT_EQ(std::vector<std::string>(log.begin(), log.begin() + 7),
            Calls(kPrefix, {"TaskName=T", "ScenarioName=S", "DeleteAction 2", "release"}));
  EXPECT_EQ(grid.Rows(), 2);
  EXPECT_EQ(grid.TextMatrix(1, 1), u"");
}

TEST_F(ActionsTabTest, ApplyOnANewTaskMakesTheButtonsAct) {
  form = Open(0, u"N");
  form->FrameSplit1.txtChaine.Type(u"a");
  form->cmdApp.Click();
  Add(ActionKind::OnErr, 1);
  EXPECT_EQ(form->Actions.grdAc.RowData(1), ActionKind::OnErr);
  EXPECT_NE(std::find(log.begin(), log.end(), "TaskName=N"), log.end());
}

}  // namespace
}  // namespace nv::test
