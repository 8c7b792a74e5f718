// A person at the task dialog: typing, choosing, adding fields, naming variables in the
// grid, previewing, switching function, and confirming or cancelling; then the registry.
#include <gtest/gtest.h>

#include "platform/win32/dialog/GridWindow.h"
#include "platform/win32/dialog/TaskDialogIds.h"
#include "store/ModuleState.h"
#include "store/RegistryOperations.h"
#include "store/TaskStore.h"
#include "store/Texts.h"
#include "tests/windialog/DialogSession.h"

namespace nv::uitest {
namespace {

namespace ids = win::ids;
constexpr int kSplit = ids::kSplit;

using TaskDialogUi = DialogSession;

TEST_F(TaskDialogUi, APersonDefinesASplitTaskAndConfirms) {
  const std::int32_t result = Play(u"T1", 0, Language::English, [](DialogDriver& d, FrmExtractionChaine&) {
    EXPECT_EQ(d.Text(ids::kValider), L"&Confirm");
    EXPECT_EQ(d.TabCaptions(), (std::vector<std::wstring>{L"Parameters", L"Extraction"}));
    d.ClickTab(L"Extraction");

    d.ClickControl(kSplit + ids::kTxtChaine);
    d.Type(L"a,b,c");
    EXPECT_EQ(d.Text(kSplit + ids::kTxtChaine), L"a,b,c");
    EXPECT_TRUE(d.Enabled(kSplit + ids::kBtnCalculeValeurChaine));

    // "Other" unlocks the separator box for a separator of one's own.
    d.Press(kSplit + ids::kSeparator0 + 8);
    d.ClickControl(kSplit + ids::kTxtSeparator);
    d.Type(L"\b|");
    EXPECT_EQ(d.Text(kSplit + ids::kTxtSeparator), L"|");
    d.Press(kSplit + ids::kBtnCalculeValeurSeparator);
    EXPECT_EQ(d.Text(kSplit + ids::kLblResultSeparator), L"|");
    d.Press(kSplit + ids::kSeparator0);  // comma
    EXPECT_EQ(d.Text(kSplit + ids::kTxtSeparator), L",");
    EXPECT_TRUE(d.Checked(kSplit + ids::kSeparator0));
    EXPECT_FALSE(d.Checked(kSplit + ids::kSeparator0 + 8));

    const int grid = kSplit + ids::kGrid;
    for (const bool up : {true, true, true, false, true}) d.ClickUpDown(kSplit + ids::kUpDown1, up);
    EXPECT_EQ(d.Text(kSplit + ids::kTxtFieldsCount), L"3");
    EXPECT_EQ(d.GridRows(grid), 4);
    EXPECT_EQ(d.Cell(grid, 3, 0), L"3");

    d.ClickCell(grid, 1, 2);
    d.Type(L"@V1");
    d.Key(VK_RETURN);
    EXPECT_EQ(d.Cell(grid, 1, 2), L"@V1");
    d.ClickCell(grid, 2, 2);
    d.Type(L"  @V2 ");
    d.Key(VK_RETURN);
    EXPECT_EQ(d.Cell(grid, 2, 2), L"@V2");
    // A name without "@" is only warned about, and stays as typed.
    d.ClickCell(grid, 3, 2);
    d.Type(L"V3");
    d.Key(VK_RETURN);
    EXPECT_EQ(d.AnswerMessageBox(), L"This string does not represent a Novra variable. It will not be accepted.");
    d.Settle();
    EXPECT_EQ(d.Cell(grid, 3, 2), L"V3");

    d.Press(kSplit + ids::kBtnPreview);
    EXPECT_EQ(d.Cell(grid, 1, 1), L"a");
    EXPECT_EQ(d.Cell(grid, 2, 1), L"b");
    EXPECT_EQ(d.Cell(grid, 3, 1), L"c");
    EXPECT_EQ(d.Cell(grid, 1, 2), L"@V1");

    // Enter moves the focus on and types nothing.
    d.ClickControl(kSplit + ids::kTxtChaine);
    ASSERT_EQ(d.Focused(), d.Find(kSplit + ids::kTxtChaine));
    d.Key(VK_RETURN);
    EXPECT_NE(d.Focused(), d.Find(kSplit + ids::kTxtChaine));
    EXPECT_EQ(d.Text(kSplit + ids::kTxtChaine), L"a,b,c");

    d.ClickTab(L"Parameters");
    d.Choose(ids::kCbFonction, 2);
    EXPECT_EQ(d.TabCaptions(), (std::vector<std::wstring>{L"Parameters", L"Find values"}));
    d.Choose(ids::kCbFonction, 0);
    EXPECT_EQ(d.TabCaptions(), (std::vector<std::wstring>{L"Parameters", L"Extraction"}));

    d.Press(ids::kValider);
  });

  EXPECT_EQ(result, 1);
  SetRegistryContext(static_cast<std::int32_t>(0x80000002), kTasks);
  TaskDefinition stored;
  LoadTaskDefinition(u"T1", stored);
  EXPECT_EQ(stored.Fonction, 0);
  EXPECT_EQ(stored.Chaine, u"a,b,c");
  EXPECT_EQ(stored.Separateur, u",");
  ASSERT_EQ(stored.Fields.size(), 3u);
  EXPECT_EQ(stored.Fields[0].Var, u"@V1");
  EXPECT_EQ(stored.Fields[1].Var, u"@V2");
  EXPECT_EQ(stored.Fields[2].Var, u"");  // not a variable reference: not kept
}

TEST_F(TaskDialogUi, FieldsInColumnsAreAddedSetPreviewedAndRemoved) {
  Play(u"T4", 0, Language::English, [](DialogDriver& d, FrmExtractionChaine&) {
    constexpr int base = ids::kExtraction;
    const int grid = base + ids::kGrid;
    d.Choose(ids::kCbFonction, 1);
    d.ClickTab(L"Substrings");
    d.ClickControl(base + ids::kTxtChaine);
    d.Type(L"a;b;c");
    EXPECT_FALSE(d.Enabled(base + ids::kBtnPreview));  // no field yet

    PostMessageW(GetDlgItem(d.Find(grid), win::GridWindow::kPlusId), BM_CLICK, 0, 0);
    d.Settle();
    ASSERT_EQ(d.GridCols(grid), 2);
    EXPECT_EQ(d.Cell(grid, 1, 1), L"0");
    EXPECT_EQ(d.Cell(grid, 3, 1), L"False");
    EXPECT_TRUE(d.Enabled(base + ids::kBtnPreview));

    d.ClickCell(grid, 1, 1);
    d.Type(L"2");
    d.Key(VK_RETURN);
    d.ClickCell(grid, 2, 1);
    d.Type(L"3");
    d.Key(VK_RETURN);
    EXPECT_EQ(d.Cell(grid, 1, 1), L"2");
    EXPECT_EQ(d.Cell(grid, 2, 1), L"3");
    // The flag row takes no typing: its check box lies over the cell instead.
    d.ClickCell(grid, 3, 1);
    d.Type(L"x");
    EXPECT_EQ(d.Cell(grid, 3, 1), L"False");
    ASSERT_TRUE(IsWindowVisible(d.Find(base + ids::kMCheckBox)));
    d.Press(base + ids::kMCheckBox);
    EXPECT_EQ(d.Cell(grid, 3, 1), L"True");

    d.Press(base + ids::kBtnPreview);
    EXPECT_EQ(d.Cell(grid, 4, 1), L";c");  // what the extraction gives for 2 to 3 with separators

    d.ClickCell(grid, 0, 1);
    PostMessageW(GetDlgItem(d.Find(grid), win::GridWindow::kMinusId), BM_CLICK, 0, 0);
    d.Settle();
    EXPECT_EQ(d.GridCols(grid), 1);
    EXPECT_FALSE(d.Enabled(base + ids::kBtnPreview));
    d.Press(ids::kAnnuler);
  });
}

TEST_F(TaskDialogUi, ACheckThatFailsKeepsTheDialogOpenOnItsTab) {
  const std::int32_t result = Play(u"T3", 0, Language::French, [](DialogDriver& d, FrmExtractionChaine&) {
    d.Press(ids::kValider);
    EXPECT_EQ(d.AnswerMessageBox(), L"Vous devez renseignez la chaine");
    d.Settle();
    EXPECT_EQ(d.Focused(), d.Find(kSplit + ids::kTxtChaine));
    EXPECT_TRUE(IsWindowVisible(d.Find(kSplit + ids::kTxtChaine)));
    d.Press(ids::kAnnuler);
  });
  EXPECT_EQ(result, 0);
  SetRegistryContext(static_cast<std::int32_t>(0x80000002), kTasks);
  EXPECT_FALSE(RegistryKeyExists(u"T3"));
}

TEST_F(TaskDialogUi, CancelByItsAcceleratorSavesNothing) {
  const std::int32_t result = Play(u"T2", 0, Language::French, [](DialogDriver& d, FrmExtractionChaine&) {
    EXPECT_EQ(d.Text(ids::kAnnuler), L"&Annuler");
    d.ClickTab(L"Déconcaténation");
    d.ClickControl(kSplit + ids::kTxtChaine);
    d.Type(L"x;y");
    d.Alt(L'a');
  });
  EXPECT_EQ(result, 0);
  SetRegistryContext(static_cast<std::int32_t>(0x80000002), kTasks);
  EXPECT_FALSE(RegistryKeyExists(u"T2"));
}

}  // namespace
}  // namespace nv::uitest
