#include <gtest/gtest.h>

#include "dialog/FrameRecherche.h"
#include "tests/dialog/DialogTest.h"

namespace nv::test {
namespace {

class FindEditor : public DialogTest {
 public:
  void SetUp() override {
    DialogTest::SetUp();
    editor = std::make_unique<FrameRecherche>(ui);
    editor->SetScenario(u"S");
  }
  const Text& Cell(std::int32_t row, std::int32_t col) const { return editor->NovraFlexGrid1.TextMatrix(row, col); }

  std::unique_ptr<FrameRecherche> editor;
};

TEST_F(FindEditor, InitialState) {
  FrameRecherche& e = *editor;
  EXPECT_EQ(e.lblMasque.Caption, u"Mask");
  EXPECT_EQ(e.lblValeurMasque.Caption, u"Valeur");
  EXPECT_EQ(e.Frame1.Caption, u"Options");
  EXPECT_EQ(e.chkTrim.Caption, u"Trim");
  EXPECT_EQ(e.Masque(), u"");
  EXPECT_EQ(e.IsTrimed(), 0);
  EXPECT_EQ(e.CaseSensitive(), 0);
  EXPECT_EQ(e.NovraFlexGrid1.Rows(), 1);
  EXPECT_EQ(e.txtFieldsCount.Content, u"0");
  EXPECT_EQ(e.txtMasque.Scenario, u"S");
}

TEST_F(FindEditor, PreviewNeedsAllThreeEntries) {
  FrameRecherche& e = *editor;
  e.SetChaine(u"a");
  e.SetMasque(u"*");
  EXPECT_TRUE(e.btnCalculeValeurMasque.Enabled);
  EXPECT_FALSE(e.btnPreview.Enabled);
  e.SetFiltre(u"*");
  EXPECT_TRUE(e.btnPreview.Enabled);
}

TEST_F(FindEditor, OptionsOnlyCountWhenChecked) {
  FrameRecherche& e = *editor;
  e.SetChaine(u"v= x ");
  e.SetMasque(u"v=*");
  e.SetFiltre(u"*");
  e.SetTrimed(2);  // greyed: not on
  e.btnPreview.Click();
  EXPECT_EQ(Cell(1, 1), u" x ");
  EXPECT_EQ(e.IsTrimed(), 2);
  e.chkTrim.Click();  // greyed to unchecked
  e.chkTrim.Click();
  e.btnPreview.Click();
  EXPECT_EQ(Cell(1, 1), u"x");
}

TEST_F(FindEditor, MaskValueButtonAndVariableMask) {
  FrameRecherche& e = *editor;
  SetVariable(u"M", u"k=*");
  e.SetChaine(u"k=v");
  e.SetMasque(u"@M");
  e.SetFiltre(u"*");
  e.btnCalculeValeurMasque.Click();
  EXPECT_EQ(e.lblResultatMasque.Caption, u"k=*");
  e.btnPreview.Click();
  EXPECT_EQ(Cell(1, 1), u"v");
  e.SetMasque(u"@Missing");  // an empty mask finds nothing
  e.btnPreview.Click();
  EXPECT_EQ(Cell(1, 1), u"v");
  EXPECT_TRUE(ui.Messages.empty());
}

TEST_F(FindEditor, APreviewThatFindsNothingStillNumbersRowOne) {
  FrameRecherche& e = *editor;
  e.SetChaine(u"abc");
  e.SetMasque(u"zz*");
  e.SetFiltre(u"*");
  e.btnPreview.Click();
  ASSERT_EQ(e.NovraFlexGrid1.Rows(), 2);
  EXPECT_EQ(Cell(1, 0), u"1");
  EXPECT_EQ(Cell(1, 1), u"");
  EXPECT_EQ(e.txtFieldsCount.Content, u"1");
  EXPECT_FALSE(e.NovraFlexGrid1.Reset);
}

TEST_F(FindEditor, PropertiesRoundTrip) {
  FrameRecherche& e = *editor;
  e.SetMasque(u"m");
  e.SetFiltre(u"f");
  e.SetTrimed(1);
  e.SetCaseSensitive(2);
  e.SetColonnes({u"@A", u"B"});
  EXPECT_EQ(e.Masque(), u"m");
  EXPECT_EQ(e.Filtre(), u"f");
  EXPECT_EQ(e.IsTrimed(), 1);
  EXPECT_EQ(e.CaseSensitive(), 2);
  EXPECT_EQ(e.Colonnes(), (std::vector<Text>{u"@A", u""}));
}

TEST_F(FindEditor, VerificationOrderAndFocus) {
  FrameRecherche& e = *editor;
  struct Case {
    Text chaine, masque, filtre;
    Text message;
    Control* focus;
  };
  const Case cases[] = {{u"", u"", u"", u"You have to fill string", &e.txtChaine},
                        {u"s", u"", u"", u"You have to fill mask", &e.txtMasque},
                        {u"s", u"m", u"", u"You have to fill filter", &e.txtFiltre},
                        {u"s", u"m", u"f", u"", nullptr}};
  for (const Case& c : cases) {
    ui.Messages.clear();
    ui.Focused = nullptr;
    e.SetChaine(c.chaine);
    e.SetMasque(c.masque);
    e.SetFiltre(c.filtre);
    EXPECT_EQ(e.Verification(), c.focus == nullptr);
    EXPECT_EQ(ui.Focused, c.focus);
    EXPECT_EQ(ui.Messages.empty() ? Text() : ui.Messages[0].Prompt, c.message);
  }
}

}  // namespace
}  // namespace nv::test
