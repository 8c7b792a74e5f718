#include <gtest/gtest.h>

#include "dialog/HeadlessDialogPresenter.h"
#include "plugin/ExtractionChaine.h"
#include "plugin/HostModule.h"
#include "tests/dialog/TaskDialogTest.h"

namespace nv::test {
namespace {

// The plug-in object opening the dialog through a headless presenter whose script plays
// the user; what the script saw is kept for the test.
class Opening : public TaskDialogTest {
 public:
  void SetUp() override {
    TaskDialogTest::SetUp();
    HostModule().PlatformDialogs = &presenter;
    plugin = std::make_unique<ExtractionChaine>();
    plugin->InitializeProperties(u"T", u"S", Language::English);
  }
  void TearDown() override {
    plugin.reset();
    HostModule().PlatformDialogs = nullptr;
    TaskDialogTest::TearDown();
  }

  struct Seen {
    std::int16_t stored = -5;
    Text caption;
    PictureBox picture;
  };

  void Script(std::function<void(FrmExtractionChaine&)> play) {
    script = [this, play = std::move(play)](FrmExtractionChaine& form) {
      seen.stored = form.TaskStored;
      seen.caption = form.Caption;
      seen.picture.BorderStyle = form.Picture1.BorderStyle;
      seen.picture.Picture = form.Picture1.Picture;
      play(form);
    };
  }

  std::function<void(FrmExtractionChaine&)> script;
  HeadlessDialogPresenter presenter{ui, [this](FrmExtractionChaine& form) { script(form); }};
  std::unique_ptr<ExtractionChaine> plugin;
  Seen seen;
};

void TypeSplitTask(FrmExtractionChaine& form) {
  form.FrameSplit1.txtChaine.Type(u"a;b");
  form.FrameSplit1.Separator.Choose(1);
}

TEST_F(Opening, ShowWrapperFollowsTheClosing) {
  struct Case {
    std::int16_t etat;
    bool confirm;
    std::int32_t result;
  };
  const Case cases[] = {{0, true, 1}, {0, false, 0}, {1, true, 1}, {1, false, 0}};
  for (const Case& c : cases) {
    plugin->Etat = c.etat;
    plugin->Nom = c.etat == 1 ? u"T" : c.confirm ? u"Confirmed" : u"Cancelled";
    Script([&](FrmExtractionChaine& form) {
      TypeSplitTask(form);
      (c.confirm ? form.cmdValider : form.cmdAnnuler).Click();
    });
    EXPECT_EQ(plugin->ShowWrapper(), c.result);
    EXPECT_EQ(plugin->Etat, c.result);
    EXPECT_EQ(seen.stored, c.etat);
    EXPECT_FALSE(presenter.LeftOpen());
  }
}

TEST_F(Opening, ShowWrapperGivesTitleAndIconAndTakesTheNameBack) {
  plugin->Etat = 0;
  Script([](FrmExtractionChaine& form) {
    form.txtTache.Content = u"Typed";
    TypeSplitTask(form);
    form.cmdValider.Click();
  });
  plugin->ShowWrapper();
  EXPECT_EQ(seen.caption, plugin->GetTitle());
  EXPECT_EQ(seen.picture.BorderStyle, 0);
  EXPECT_EQ(seen.picture.Picture, u"WRAPPER_ICON");
  EXPECT_EQ(plugin->Nom, u"Typed");
  EXPECT_EQ(Stored(u"Typed", u"Chaine"), u"a;b");
}

TEST_F(Opening, AfficheReturnsZeroKeepsItsOwnTitleAndTheName) {
  for (const bool confirm : {true, false}) {
    plugin->Etat = 1;
    Script([&](FrmExtractionChaine& form) {
      form.txtTache.Content = u"Other";
      TypeSplitTask(form);
      (confirm ? form.cmdValider : form.cmdAnnuler).Click();
    });
    EXPECT_EQ(plugin->Affiche(), 0);
    EXPECT_EQ(plugin->Etat, confirm ? 1 : 0);
    EXPECT_EQ(plugin->Nom, u"T");
    EXPECT_EQ(seen.caption, u"String extraction");
    EXPECT_EQ(seen.picture.Picture, u"");
  }
}

TEST_F(Opening, ApplyThenCancelKeepsTheSaveAndGivesZero) {
  plugin->Etat = 0;
  plugin->Nom = u"N";
  Script([](FrmExtractionChaine& form) {
    TypeSplitTask(form);
    form.cmdApp.Click();
    form.cmdAnnuler.Click();
  });
  EXPECT_EQ(plugin->ShowWrapper(), 0);
  EXPECT_EQ(Stored(u"N", u"Chaine"), u"a;b");
  EXPECT_EQ(Stored(u"N", u"Etat"), u"0");
}

TEST_F(Opening, OtherWorkingModesAreLeftAsTheyWere) {
  plugin->Etat = 7;
  Script([](FrmExtractionChaine& form) { form.Hide(); });
  EXPECT_EQ(plugin->ShowWrapper(), 7);
  Script([](FrmExtractionChaine& form) { form.TaskStored = -1; form.Hide(); });
  plugin->Etat = 1;
  EXPECT_EQ(plugin->ShowWrapper(), 1);
}

TEST_F(Opening, ADialogLeftOpenIsReported) {
  plugin->Etat = 0;
  plugin->Nom = u"";
  Script([](FrmExtractionChaine& form) { form.cmdValider.Click(); });
  plugin->ShowWrapper();
  EXPECT_TRUE(presenter.LeftOpen());
  ASSERT_EQ(ui.Messages.size(), 1u);
  EXPECT_EQ(ui.Messages[0].Prompt, u"Enter process name");
}

}  // namespace
}  // namespace nv::test
