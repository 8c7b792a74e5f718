#include <gtest/gtest.h>

#include "dialog/FrameSplit.h"
#include "tests/dialog/DialogTest.h"

namespace nv::test {
namespace {

class SplitEditor : public DialogTest {
 public:
  void SetUp() override {
    DialogTest::SetUp();
    editor = std::make_unique<FrameSplit>(ui);
    editor->SetScenario(u"S");
  }

  const Text& Cell(std::int32_t row, std::int32_t col) const { return editor->NovraFlexGrid1.TextMatrix(row, col); }

  std::unique_ptr<FrameSplit> editor;
};

TEST_F(SplitEditor, InitialState) {
  FrameSplit& e = *editor;
  EXPECT_EQ(e.lblChaine.Caption, u"String");
  EXPECT_EQ(e.lblSeparator.Caption, u"Separator");
  EXPECT_EQ(e.Separator.Captions[4], u"tab");
  EXPECT_EQ(e.Separator.Captions[7], u"CR LF");
  EXPECT_EQ(e.Separator.Captions[8], u"other");
  EXPECT_EQ(e.btnPreview.Caption, u"Preview");
  EXPECT_EQ(e.Separateur(), u";");
  EXPECT_EQ(e.Separator.Chosen(), 1u);
  EXPECT_FALSE(e.txtSeparator.Editable);
  EXPECT_EQ(e.NovraFlexGrid1.Rows(), 1);
  EXPECT_EQ(e.NovraFlexGrid1.Cols(), 3);
  EXPECT_EQ(e.NovraFlexGrid1.FixedCols, 2);
  EXPECT_EQ(Cell(0, 2), u"Var.");
  EXPECT_EQ(e.txtFieldsCount.Content, u"0");
  EXPECT_FALSE(e.btnPreview.Enabled);
  EXPECT_FALSE(e.btnCalculeValeurChaine.Enabled);
  EXPECT_TRUE(e.Colonnes().empty());
}

TEST_F(SplitEditor, SeparatorWriteChoosesTheExactOption) {
  struct Case {
    Text written;
    std::size_t option;
    bool editable;
  };
  const Case cases[] = {{u",", 0, false},    {u"\t", 4, false},   {u"\r", 5, false},   {u"\n", 6, false},
                        {u"\r\n", 7, false}, {u"", 8, true},      {u"|;", 8, true},    {u"@Sep", 8, true}};
  for (const Case& c : cases) {
    editor->SetSeparateur(c.written);
    EXPECT_EQ(editor->Separateur(), c.written);
    EXPECT_EQ(editor->Separator.Chosen(), c.option) << editor->Separator.Chosen();
    EXPECT_EQ(editor->txtSeparator.Editable, c.editable);
  }
}

TEST_F(SplitEditor, UserSeparatorChoiceLocksOrUnlocksTheBox) {
  editor->Separator.Choose(8);
  EXPECT_TRUE(editor->txtSeparator.Editable);
  EXPECT_TRUE(editor->btnCalculeValeurSeparator.Enabled);
  editor->txtSeparator.Type(u"@Sep");
  SetVariable(u"Sep", u"#");
  editor->btnCalculeValeurSeparator.Click();
  EXPECT_EQ(editor->lblResultSeparator.Caption, u"#");
  editor->Separator.Choose(0);
  EXPECT_EQ(editor->Separateur(), u",");
  EXPECT_FALSE(editor->txtSeparator.Editable);
  EXPECT_EQ(editor->lblResultSeparator.Caption, u"");
  editor->txtSeparator.Type(u"x");  // locked
  EXPECT_EQ(editor->Separateur(), u",");
}

TEST_F(SplitEditor, ValueButtonsShowValueLiteralOrNC) {
  SetVariable(u"X", u"value of X");
  struct Case {
    Text entry;
    Text shown;
  };
  const Case cases[] = {{u"@X", u"value of X"}, {u"@Missing", u"N/C"}, {u"@", u"N/C"}, {u"  lit eral ", u"  lit eral "}};
  for (const Case& c : cases) {
    editor->SetChaine(c.entry);
    editor->btnCalculeValeurChaine.Click();
    EXPECT_EQ(editor->lblResultatChaine.Caption, c.shown);
  }
  EXPECT_TRUE(ui.Messages.empty());
}

TEST_F(SplitEditor, ButtonsFollowTheEntries) {
  editor->SetChaine(u"a;b");
  EXPECT_TRUE(editor->btnCalculeValeurChaine.Enabled);
  EXPECT_TRUE(editor->btnPreview.Enabled);
  editor->Separator.Choose(8);
  editor->txtSeparator.Type(u"");
  EXPECT_FALSE(editor->btnPreview.Enabled);
  EXPECT_FALSE(editor->btnCalculeValeurSeparator.Enabled);
  editor->SetChaine(u"");
  editor->txtSeparator.Type(u"|");
  EXPECT_FALSE(editor->btnCalculeValeurChaine.Enabled);
  EXPECT_TRUE(editor->btnCalculeValeurSeparator.Enabled);
  EXPECT_FALSE(editor->btnPreview.Enabled);
}

TEST_F(SplitEditor, VariableCellsWarnOnNamesAndKeepTheTrimmedText) {
  editor->SetColonnes({u"", u""});
  struct Case {
    std::int32_t row;
    std::int32_t col;
    Text typed;
    Text kept;
    bool warned;
  };
  const Case cases[] = {{1, 2, u"  @X  ", u"@X", false},
                        {2, 2, u" Y", u"Y", true},
                        {2, 2, u"   ", u"", false},
                        {1, 1, u"Y", u"Y", false}};  // not a variable cell
  for (const Case& c : cases) {
    ui.Messages.clear();
    editor->NovraFlexGrid1.EnterCell(c.row, c.col);
    editor->NovraFlexGrid1.EditCell(c.typed);
    EXPECT_EQ(Cell(c.row, c.col), c.kept);
    ASSERT_EQ(ui.Messages.size(), c.warned ? 1u : 0u) << int(c.row);
    if (c.warned) {
      EXPECT_EQ(ui.Messages[0].Prompt, u"This string does not represent a Novra variable. It will not be accepted.");
      EXPECT_EQ(ui.Messages[0].Style, 48);
    }
  }
  editor->NovraFlexGrid1.EnterCell(2, 2);
  editor->NovraFlexGrid1.EditCell(u"Y");
  EXPECT_EQ(editor->Colonnes(), (std::vector<Text>{u"@X", u""}));
}

TEST_F(SplitEditor, RowOperations) {
  FrameSplit& e = *editor;
  e.UpDown1.ClickDown();  // nothing to remove
  EXPECT_EQ(e.NovraFlexGrid1.Rows(), 1);
  EXPECT_EQ(e.txtFieldsCount.Content, u"0");
  e.UpDown1.ClickUp();
  e.UpDown1.ClickUp();
  EXPECT_EQ(Cell(1, 0), u"1");
  EXPECT_EQ(Cell(2, 0), u"2");
  EXPECT_EQ(e.txtFieldsCount.Content, u"2");
  EXPECT_EQ(e.NovraFlexGrid1.CellAlignmentAt(2, 1), CellAlignment::CenterCenter);
  EXPECT_EQ(e.NovraFlexGrid1.CellAlignmentAt(2, 2), CellAlignment::LeftCenter);
  EXPECT_EQ(e.NovraFlexGrid1.Col(), 0);
  EXPECT_FALSE(e.NovraFlexGrid1.Reset);
  e.UpDown1.ClickDown();
  EXPECT_EQ(e.NovraFlexGrid1.Rows(), 2);
  EXPECT_EQ(e.txtFieldsCount.Content, u"1");
  e.txtFieldsCount.GotFocus();
  EXPECT_EQ(ui.Focused, &e.UpDown1);
}

TEST_F(SplitEditor, ClearEmptiesOnlyTheVariableNames) {
  editor->SetColonnes({u"@A", u"@B"});
  editor->SetChaine(u"x;y");
  editor->btnPreview.Click();
  editor->btnClear.Click();
  EXPECT_EQ(editor->Colonnes(), (std::vector<Text>{u"", u""}));
  EXPECT_EQ(Cell(2, 1), u"y");
  EXPECT_EQ(Cell(2, 0), u"2");
}

TEST_F(SplitEditor, ColonnesRoundTrip) {
  editor->SetColonnes({u"@A", u"@B"});
  EXPECT_EQ(editor->NovraFlexGrid1.Rows(), 3);
  EXPECT_EQ(Cell(2, 0), u"2");
  EXPECT_EQ(Cell(2, 1), u"");
  EXPECT_EQ(editor->txtFieldsCount.Content, u"2");
  editor->SetColonnes({u"@A", u"B", u"@C"});
  EXPECT_EQ(editor->Colonnes(), (std::vector<Text>{u"@A", u"", u"@C"}));
  editor->SetColonnes({});
  EXPECT_EQ(editor->NovraFlexGrid1.Rows(), 1);
  EXPECT_EQ(editor->txtFieldsCount.Content, u"3");  // left as it was
}

TEST_F(SplitEditor, PreviewFillsValuesAndKeepsNamesAndExtraRows) {
  FrameSplit& e = *editor;
  e.SetChaine(u"a;b;c");
  e.btnPreview.Click();
  ASSERT_EQ(e.NovraFlexGrid1.Rows(), 4);
  EXPECT_EQ(Cell(3, 0), u"3");
  EXPECT_EQ(Cell(3, 1), u"c");
  EXPECT_EQ(Cell(3, 2), u"");
  EXPECT_EQ(e.txtFieldsCount.Content, u"3");

  e.NovraFlexGrid1.EnterCell(1, 2);
  e.NovraFlexGrid1.EditCell(u"@First");
  e.SetChaine(u"x;;");
  e.btnPreview.Click();
  EXPECT_EQ(Cell(1, 1), u"x");
  EXPECT_EQ(Cell(1, 2), u"@First");
  EXPECT_EQ(Cell(2, 1), u"b");  // an empty result leaves the cell
  EXPECT_EQ(Cell(3, 1), u"c");

  e.SetChaine(u"only");
  e.btnPreview.Click();
  EXPECT_EQ(Cell(1, 1), u"only");
  EXPECT_EQ(Cell(3, 1), u"c");  // beyond the results
  EXPECT_EQ(e.txtFieldsCount.Content, u"1");
  EXPECT_FALSE(e.NovraFlexGrid1.Reset);
  EXPECT_EQ(e.Chaine(), u"only");
}

TEST_F(SplitEditor, PreviewResolvesVariablesAndUsesEmptyForUnreadableOnes) {
  SetVariable(u"In", u"1|2");
  editor->SetChaine(u"@In");
  editor->SetSeparateur(u"@Sep");  // no such variable: empty separator, one field per unit
  editor->btnPreview.Click();
  EXPECT_EQ(editor->NovraFlexGrid1.Rows(), 5);
  SetVariable(u"Sep", u"|");
  editor->btnPreview.Click();
  EXPECT_EQ(Cell(2, 1), u"2");
  EXPECT_TRUE(ui.Messages.empty());
}

TEST_F(SplitEditor, VerificationStopsAtTheFirstEmptyEntry) {
  struct Case {
    Text chaine;
    Text separateur;
    bool passes;
    Text message;
    Control* focus;
  };
  const Case cases[] = {{u"", u"", false, u"You have to fill string", &editor->txtChaine},
                        {u"a", u"", false, u"You have to fill separator", &editor->txtSeparator},
                        {u"a", u";", true, u"", nullptr}};
  for (const Case& c : cases) {
    ui.Messages.clear();
    ui.Focused = nullptr;
    editor->SetChaine(c.chaine);
    editor->SetSeparateur(c.separateur);
    EXPECT_EQ(editor->Verification(), c.passes);
    EXPECT_EQ(ui.Focused, c.focus);
    ASSERT_EQ(ui.Messages.size(), c.passes ? 0u : 1u);
    if (!c.passes) {
      EXPECT_EQ(ui.Messages[0].Prompt, c.message);
    }
  }
}

}  // namespace
}  // namespace nv::test
