#include <gtest/gtest.h>

#include "common/Error.h"
#include "dialog/FlexGrid.h"
#include "dialog/SimpleControls.h"
#include "dialog/TextBoxVar.h"

namespace nv::test {
namespace {

TEST(TextBoxVarControl, NotifiesEveryChangeAndTypingNeedsAnEditableBox) {
  TextBoxVar box;
  int changes = 0;
  box.OnChange = [&] { ++changes; };
  box.SetText(u"a");
  box.SetText(u"a");  // no change, no notification
  box.Editable = false;
  box.Type(u"typed");
  EXPECT_EQ(box.GetText(), u"a");
  box.SetText(u"b");  // by program, locked or not
  EXPECT_EQ(changes, 2);
}

TEST(FlexGridControl, EditingChecksTheTypedTextThenKeepsTheTrimmedOne) {
  FlexGrid grid;
  grid.SetRows(2);
  grid.SetCols(3);
  Text checked;
  grid.OnEditCheck = [&] { checked = grid.Editor().Content; };
  grid.OnEditTrim = [&] { grid.Editor().Content = u"trimmed"; };
  grid.EnterCell(1, 2);
  grid.EditCell(u" x ");
  EXPECT_EQ(checked, u" x ");
  EXPECT_EQ(grid.TextMatrix(1, 2), u"trimmed");
}

TEST(FlexGridControl, PlusAndMinusAddAndRemoveColumnsWithTheirNotifications) {
  FlexGrid grid;
  grid.SetRows(5);
  grid.SetCols(1);
  int added = 0;
  int removed = 0;
  grid.OnColumnAdded = [&] { ++added; };
  grid.OnColumnRemoved = [&] { ++removed; };
  grid.ClickPlus();
  grid.AddColumn();
  grid.SetTextMatrix(0, 2, u"last");
  grid.SetCol(1);
  grid.ClickMinus();
  EXPECT_EQ(grid.Cols(), 2);
  EXPECT_EQ(grid.TextMatrix(0, 1), u"last");
  grid.SetCol(0);
  grid.ClickMinus();  // the fixed column stays
  EXPECT_EQ(grid.Cols(), 2);
  EXPECT_EQ(added, 2);
  EXPECT_EQ(removed, 1);
  grid.ShowPlusMoins = false;
  grid.ClickPlus();
  EXPECT_EQ(grid.Cols(), 2);
}

TEST(FlexGridControl, CellGeometryFollowsTheColumnWidths) {
  FlexGrid grid;
  grid.SetRows(5);
  grid.SetCols(3);
  grid.SetColWidth(0, 2000);
  grid.SetColWidth(1, 500);
  grid.SetRow(3);
  grid.SetCol(2);
  EXPECT_EQ(grid.Inner().CellLeft(), 2500);
  EXPECT_EQ(grid.Inner().CellTop(), 3 * FlexGrid::kRowHeight);
  EXPECT_EQ(grid.Inner().CellWidth(), FlexGrid::kDefaultColumnWidth);
}

TEST(FlexGridControl, CellsOutsideTheGridAreSubscriptErrors) {
  FlexGrid grid;
  grid.SetRows(1);
  grid.SetCols(1);
  try {
    grid.SetTextMatrix(1, 0, u"x");
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), ErrorNumber::SubscriptOutOfRange);
  }
}

TEST(ButtonControl, ADisabledButtonTakesNoClick) {
  Button button;
  int clicks = 0;
  button.OnClick = [&] { ++clicks; };
  button.Enabled = false;
  button.Click();
  button.Enabled = true;
  button.Click();
  EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace nv::test
