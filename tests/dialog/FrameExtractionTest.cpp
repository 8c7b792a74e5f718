#include <gtest/gtest.h>

#include "common/Conversions.h"
#include "dialog/FrameExtraction.h"
#include "tests/dialog/DialogTest.h"

namespace nv::test {
namespace {

class ExtractionEditor : public DialogTest {
 public:
  void SetUp() override {
    DialogTest::SetUp();
    editor = std::make_unique<FrameExtraction>(ui);
    editor->SetScenario(u"S");
  }
  const Text& Cell(std::int32_t row, std::int32_t col) const { return editor->NovraFlexGrid1.TextMatrix(row, col); }

  std::unique_ptr<FrameExtraction> editor;
};

TEST_F(ExtractionEditor, InitialStateHasCaptionsAndNoField) {
  FrameExtraction& e = *editor;
  EXPECT_EQ(e.NovraFlexGrid1.Cols(), 1);
  EXPECT_EQ(e.NovraFlexGrid1.Rows(), 5);
  EXPECT_EQ(e.NovraFlexGrid1.FixedRows, 0);
  const Text captions[] = {u"Variable", u"Start", u"End", u"Show sep.", u"Value"};
  for (std::int32_t row = 0; row < 5; ++row) EXPECT_EQ(Cell(row, 0), captions[row]);
  EXPECT_EQ(e.NovraFlexGrid1.ColWidth(4), 2500);
  EXPECT_FALSE(e.mCheckBox.Visible);
  EXPECT_EQ(e.Separateur(), u";");
  e.SetChaine(u"a;b");
  EXPECT_FALSE(e.btnPreview.Enabled);  // no field yet
  e.NovraFlexGrid1.ClickPlus();
  EXPECT_TRUE(e.btnPreview.Enabled);
  e.NovraFlexGrid1.SetCol(1);
  e.NovraFlexGrid1.ClickMinus();
  EXPECT_FALSE(e.btnPreview.Enabled);
}

TEST_F(ExtractionEditor, ANewFieldGetsItsDefaults) {
  FrameExtraction& e = *editor;
  e.NovraFlexGrid1.ClickPlus();
  EXPECT_EQ(Cell(0, 1), u"");
  EXPECT_EQ(Cell(1, 1), u"0");
  EXPECT_EQ(Cell(2, 1), u"0");
  EXPECT_EQ(Cell(3, 1), BooleanText(false));
  EXPECT_EQ(e.NovraFlexGrid1.CellBackColorAt(4, 1), kButtonFaceColour);
  EXPECT_EQ(e.NovraFlexGrid1.CellAlignmentAt(3, 1), CellAlignment::CenterCenter);
}

TEST_F(ExtractionEditor, CellEnteredChoosesTheInputAndTheCheckBox) {
  FrameExtraction& e = *editor;
  e.SetLignes({{u"@A", u"1", u"2", u"True"}});
  struct Case {
    std::int32_t row;
    std::int16_t mode;
    bool boxShown;
  };
  const Case cases[] = {{0, 2, false}, {1, 1, false}, {2, 1, false}, {3, 3, true}, {4, 3, false}};
  for (const Case& c : cases) {
    e.NovraFlexGrid1.EnterCell(c.row, 1);
    EXPECT_EQ(e.NovraFlexGrid1.InputMode, c.mode);
    EXPECT_EQ(e.mCheckBox.Visible, c.boxShown);
  }
  e.NovraFlexGrid1.Left = 100;
  e.NovraFlexGrid1.EnterCell(3, 1);
  EXPECT_EQ(e.mCheckBox.Value, 1);
  EXPECT_EQ(e.mCheckBox.Left, 100 + 2000);
  EXPECT_EQ(e.mCheckBox.Top, 3 * FlexGrid::kRowHeight + (FlexGrid::kRowHeight - e.mCheckBox.Height) / 2);
  e.mCheckBox.Click();
  EXPECT_EQ(Cell(3, 1), BooleanText(false));
  EXPECT_TRUE(e.mCheckBox.Visible);
  e.mCheckBox.Click();
  EXPECT_EQ(Cell(3, 1), BooleanText(true));
}

TEST_F(ExtractionEditor, LignesRoundTripOverwritesTheDefaults) {
  FrameExtraction& e = *editor;
  e.SetLignes({{u" @A ", u"x", u"", u"Vrai"}, {u"B", u"1", u"2", u""}});
  ASSERT_EQ(e.NovraFlexGrid1.Cols(), 3);
  EXPECT_EQ(e.NovraFlexGrid1.CellBackColorAt(4, 2), kButtonFaceColour);
  const std::vector<LigneExtraction> expected = {{u"@A", u"x", u"", u"Vrai"}, {u"", u"1", u"2", u""}};
  EXPECT_EQ(e.Lignes(), expected);
  e.btnClear.Click();
  EXPECT_EQ(Cell(0, 1), u"");
  EXPECT_EQ(Cell(1, 1), u"x");
}

TEST_F(ExtractionEditor, VariableCellsAreRowZero) {
  FrameExtraction& e = *editor;
  e.NovraFlexGrid1.ClickPlus();
  e.NovraFlexGrid1.EnterCell(0, 1);
  e.NovraFlexGrid1.EditCell(u"Name");
  EXPECT_EQ(ui.Messages.size(), 1u);
  e.NovraFlexGrid1.EnterCell(1, 1);
  e.NovraFlexGrid1.EditCell(u" 3 ");
  EXPECT_EQ(ui.Messages.size(), 1u);
  EXPECT_EQ(Cell(1, 1), u"3");
}

TEST_F(ExtractionEditor, PreviewShowsWhatWentWrongInTheFieldsValueCell) {
  FrameExtraction& e = *editor;
  e.SetChaine(u"a;b;c");
  e.SetLignes({{u"@A", u"0", u"1", u""},
               {u"@B", u"99999", u"1", BooleanText(false)},
               {u"@C", u"-9", u"2", BooleanText(false)},
               {u"@D", u"2", u"3", BooleanText(false)}});
  e.btnPreview.Click();
  EXPECT_EQ(Cell(4, 1), u"Execution error #13 ,Type mismatch");
  EXPECT_EQ(Cell(4, 2), u"Execution error #6 ,Overflow");
  EXPECT_EQ(Cell(4, 3), u"Execution error #9 ,Subscript out of range");
  EXPECT_EQ(Cell(4, 4), u"c");
  EXPECT_TRUE(ui.Messages.empty());
  EXPECT_EQ(Cell(0, 1), u"@A");  // nothing else changes
}

TEST_F(ExtractionEditor, VerificationOrderAndFocus) {
  FrameExtraction& e = *editor;
  e.SetLignes({{u"@A", u"1", u"1", u""}, {u"@B", u"1", u"", u""}});
  struct Case {
    Text chaine, separateur;
    Text message;
    Control* focus;
  };
  const Case cases[] = {{u"", u";", u"You have to fill string", &e.txtChaine},
                        {u"s", u"", u"You have to fill separator", &e.txtSeparator},
                        {u"s", u";", u"Incorrect value", &e.txtSeparator}};
  for (const Case& c : cases) {
    ui.Messages.clear();
    e.SetChaine(c.chaine);
    e.SetSeparateur(c.separateur);
    EXPECT_FALSE(e.Verification());
    EXPECT_EQ(ui.Focused, c.focus);
    ASSERT_EQ(ui.Messages.size(), 1u);
    EXPECT_EQ(ui.Messages[0].Prompt, c.message);
  }
  e.NovraFlexGrid1.SetTextMatrix(2, 2, u"x");  // positions need not be numbers
  EXPECT_TRUE(e.Verification());
}

}  // namespace
}  // namespace nv::test
