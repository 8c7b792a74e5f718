#include <gtest/gtest.h>

#include "common/Utf.h"
#include "dialog/CenterForm.h"
#include "tests/dialog/TaskDialogTest.h"

namespace nv::test {
namespace {

using Dialog = TaskDialogTest;

TEST_F(Dialog, OpensANewTaskOnTheSplitFunction) {
  const auto form = Open(0, u"New");
  EXPECT_EQ(form->Caption, u"String extraction");
  EXPECT_EQ(form->SSTab1.Tab(), 0);
  const bool available[] = {true, true, false, false, false, false};
  for (std::int32_t tab = 0; tab < 6; ++tab) EXPECT_EQ(form->SSTab1.TabEnabled(tab), available[tab]) << tab;
  EXPECT_EQ(form->SSTab1.TabCaption(3), u"Find values");
  EXPECT_EQ(form->CBFonction.ListIndex(), 0);
  EXPECT_EQ(form->CBFonction.ListCount(), 3);
  EXPECT_EQ(form->txtTache.Content, u"New");
  EXPECT_FALSE(form->txtTache.Enabled);
  EXPECT_EQ(form->cmdAnnuler.Caption, u"C&ancel");
  EXPECT_EQ(form->Actions.grdAc.Rows(), 2);
}

TEST_F(Dialog, ChoosingAFunctionLeavesOnlyItsTab) {
  const auto form = Open(0);
  for (std::int32_t function = 0; function < 3; ++function) {
    form->CBFonction.SetListIndex(function);
    for (std::int32_t tab = 1; tab <= 3; ++tab) EXPECT_EQ(form->SSTab1.TabEnabled(tab), tab == function + 1);
  }
}

TEST_F(Dialog, NewTaskNameChecks) {
  PutDword(Reg(), kTasks + u"\\Taken", u"Fonction", 0);
  struct Case {
    std::int16_t stored;
    Text name;
    Text message;  // empty: saved
  };
  const Case cases[] = {{0, u"", u"Enter process name"},
                        {0, u"Taken", u"This process already exists"},
                        {1, u"Taken", u""},
                        {0, u"Fresh", u""}};
  for (const Case& c : cases) {
    ui.Messages.clear();
    const auto form = Open(c.stored, c.name);
    form->CBFonction.SetListIndex(0);
    form->FrameSplit1.txtChaine.Type(u"a;b");
    form->FrameSplit1.Separator.Choose(1);
    form->SSTab1.SetTab(1);
    form->cmdValider.Click();
    if (c.message.empty()) {
      EXPECT_TRUE(ui.Messages.empty()) << ToUtf8(c.name);
      EXPECT_FALSE(form->Visible);
      EXPECT_EQ(Stored(c.name, u"Chaine"), u"a;b");
    } else {
      ASSERT_EQ(ui.Messages.size(), 1u) << ToUtf8(c.name);
      EXPECT_EQ(ui.Messages[0].Prompt, c.message);
      EXPECT_EQ(ui.Messages[0].Style, 48);
      EXPECT_TRUE(form->Visible);
      EXPECT_EQ(form->SSTab1.Tab(), 0);
      EXPECT_EQ(form->TaskStored, c.stored);
      EXPECT_FALSE(Has(c.name, u"Type"));
    }
  }
}

TEST_F(Dialog, NewTaskIsCreatedWithStatusZero) {
  const auto form = Open(0, u"N");
  form->FrameSplit1.txtChaine.Type(u"@Line");
  form->FrameSplit1.Separator.Choose(0);
  form->FrameSplit1.SetColonnes({u"@A", u"@B"});
  form->txtComm.Content = u"note";
  form->cmdValider.Click();
  EXPECT_EQ(form->TaskStored, 1);
  EXPECT_EQ(form->TaskName, u"N");
  EXPECT_EQ(Stored(u"N", u"Etat"), u"0");
  EXPECT_TRUE(Has(u"N", u"CréeLe"));
  EXPECT_FALSE(Has(u"N", u"ModifiéLe"));
  EXPECT_EQ(Stored(u"N", u"Type"), u"39");
  EXPECT_EQ(Stored(u"N", u"Comment"), u"note");
  EXPECT_EQ(Stored(u"N", u"Separateur"), u",");
  EXPECT_EQ(Stored(u"N", u"Fields.Count"), u"2");
  EXPECT_EQ(Stored(u"N", u"Fields(2).Var"), u"@B");
}

TEST_F(Dialog, StoredFindTaskOpensInItsEditorAndKeepsItsStatus) {
  PutDword(Reg(), kTask, u"Etat", 2);
  PutDword(Reg(), kTask, u"Fonction", 2);
  PutText(Reg(), kTask, u"Chaine", u"host=a; port=1");
  PutText(Reg(), kTask, u"Masque", u"host=*; port=*");
  PutText(Reg(), kTask, u"Filtre", u"*");
  PutText(Reg(), kTask, u"Trim", u"1");
  PutText(Reg(), kTask, u"Comment", u"kept");
  PutDword(Reg(), kTask, u"Fields.Count", 2);
  PutText(Reg(), kTask, u"Fields(1).Var", u"@H");
  PutText(Reg(), kTask, u"Fields(2).Var", u"@P");
  const auto form = Open(1);
  EXPECT_EQ(form->CBFonction.ListIndex(), 2);
  EXPECT_TRUE(form->SSTab1.TabEnabled(3));
  EXPECT_FALSE(form->SSTab1.TabEnabled(1));
  EXPECT_EQ(form->txtComm.Content, u"kept");
  EXPECT_EQ(form->FrameRecherche1.Masque(), u"host=*; port=*");
  EXPECT_EQ(form->FrameRecherche1.IsTrimed(), 1);
  EXPECT_EQ(form->FrameRecherche1.Colonnes(), (std::vector<Text>{u"@H", u"@P"}));
  form->cmdValider.Click();
  EXPECT_EQ(Stored(u"T", u"Etat"), u"2");
  EXPECT_TRUE(Has(u"T", u"ModifiéLe"));
  EXPECT_FALSE(Has(u"T", u"CréeLe"));
  EXPECT_EQ(Stored(u"T", u"Trim"), u"1");
  EXPECT_EQ(Stored(u"T", u"CaseSensitive"), u"0");
}

TEST_F(Dialog, SwitchingFunctionDeletesOldFieldsAndLeavesStaleValues) {
  PutDword(Reg(), kTask, u"Fonction", 1);
  PutText(Reg(), kTask, u"Chaine", u"l1|l2|l3");
  PutText(Reg(), kTask, u"Separateur", u"|");
  PutText(Reg(), kTask, u"Masque", u"old mask");
  PutText(Reg(), kTask, u"Trim", u"1");
  PutDword(Reg(), kTask, u"Fields.Count", 5);
  for (int i = 1; i <= 5; ++i) {
    const Text n = DecimalText(i);
    PutText(Reg(), kTask, u"Fields(" + n + u").Var", u"@V" + n);
    PutText(Reg(), kTask, u"Fields(" + n + u").Start", n);
    PutText(Reg(), kTask, u"Fields(" + n + u").End", n);
    PutText(Reg(), kTask, u"Fields(" + n + u").ShowSep", u"False");
  }
  const auto form = Open(1);
  EXPECT_EQ(form->FrameExtraction1.Lignes().size(), 5u);
  EXPECT_EQ(form->FrameExtraction1.Separateur(), u"|");
  form->CBFonction.SetListIndex(0);
  form->FrameSplit1.txtChaine.Type(u"x,y");
  form->FrameSplit1.Separator.Choose(0);
  form->FrameSplit1.SetColonnes({u"@X"});
  form->cmdValider.Click();
  EXPECT_EQ(Stored(u"T", u"Fonction"), u"0");
  EXPECT_EQ(Stored(u"T", u"Fields.Count"), u"1");
  EXPECT_EQ(Stored(u"T", u"Fields(1).Var"), u"@X");
  EXPECT_FALSE(Has(u"T", u"Fields(1).Start"));
  EXPECT_FALSE(Has(u"T", u"Fields(5).Var"));
  EXPECT_FALSE(Has(u"T", u"Masque"));  // deleted, and only function 2 writes it again
  EXPECT_EQ(Stored(u"T", u"Trim"), u"1");  // never deleted
}

TEST_F(Dialog, EditorVerificationFailureShowsItsTabAndSavesNothing) {
  const auto form = Open(0, u"N");
  form->cmdApp.Click();
  ASSERT_EQ(ui.Messages.size(), 1u);
  EXPECT_EQ(ui.Messages[0].Prompt, LoadText(TextId::StringMissingMessage));
  EXPECT_EQ(form->SSTab1.Tab(), 1);
  EXPECT_EQ(form->TaskStored, 0);
  EXPECT_FALSE(Has(u"N", u"Type"));
}

TEST_F(Dialog, StoredTaskWithoutAFunction) {
  for (const std::uint32_t code : {0xFFFFFFFFu, 7u}) {
    ui.Messages.clear();
    PutDword(Reg(), kTask, u"Fonction", code);
    PutText(Reg(), kTask, u"Chaine", u"left over");
    const auto form = Open(1);
    EXPECT_EQ(form->CBFonction.ListIndex(), -1);
    for (std::int32_t tab = 1; tab <= 3; ++tab) EXPECT_FALSE(form->SSTab1.TabEnabled(tab));
    EXPECT_EQ(form->FrameSplit1.Chaine(), u"");
    form->cmdValider.Click();
    ASSERT_EQ(ui.Messages.size(), 1u);
    EXPECT_EQ(ui.Messages[0].Prompt, u"You have to select a function");
    EXPECT_EQ(ui.Focused, &form->CBFonction);
    EXPECT_TRUE(form->Visible);
  }
}

TEST_F(Dialog, ApplyKeepsOpenAndLaterSavesAreModifications) {
  const auto form = Open(0, u"N");
  form->FrameSplit1.txtChaine.Type(u"a");
  form->cmdApp.Click();
  EXPECT_TRUE(form->Visible);
  EXPECT_EQ(form->TaskStored, 1);
  EXPECT_FALSE(Has(u"N", u"ModifiéLe"));
  form->cmdApp.Click();  // no name check now, though the key exists
  EXPECT_TRUE(ui.Messages.empty());
  EXPECT_TRUE(Has(u"N", u"ModifiéLe"));
  form->cmdAnnuler.Click();
  EXPECT_FALSE(form->Visible);
  EXPECT_EQ(form->TaskStored, 0);
  EXPECT_EQ(Stored(u"N", u"Chaine"), u"a");
}

TEST_F(Dialog, EnterBecomesATabStroke) {
  const auto form = Open(0);
  std::int16_t key = 13;
  form->Form_KeyPress(key);
  EXPECT_EQ(key, 0);
  EXPECT_EQ(ui.TabKeys, 1);
  key = 'a';
  form->Form_KeyPress(key);
  EXPECT_EQ(key, 'a');
  EXPECT_EQ(ui.TabKeys, 1);
}

TEST_F(Dialog, HelpAsksTheActionsEditorForTheTaskTypesHelp) {
  const auto form = Open(0);
  form->cmdHelp.Click();
  ASSERT_EQ(prompt.helpShown.size(), 1u);
  EXPECT_NE(prompt.helpShown[0], u"No help for this task type.");
}

TEST(CenterForm, HalvesAreTruncatedBeforeTheSubtraction) {
  struct Case {
    std::int32_t screen, form, offset;
  };
  const Case cases[] = {{9000, 6000, 1500}, {9001, 6000, 1500}, {9001, 6001, 1500},
                        {9000, 6001, 1500}, {4000, 9001, -2500}, {0, 1, 0}};
  for (const Case& c : cases) EXPECT_EQ(CentredOffset(c.screen, c.form), c.offset) << c.screen << " " << c.form;

  RecordingUiServices ui;
  ui.Screen = {15361, 9001};
  Control form;
  form.Width = 9600;
  form.Height = 6000;
  CenterForm(form, ui);
  EXPECT_EQ(form.Top, 1500);
  EXPECT_EQ(form.Left, 2880);
}

}  // namespace
}  // namespace nv::test
