// Every tab in both languages: a picture of each in the build folder, and the layout
// rules checked on each at 96 DPI.
#include <gtest/gtest.h>

#include "platform/win32/dialog/TaskDialogIds.h"
#include "store/Texts.h"
#include "tests/windialog/DialogSession.h"
#include "tests/windialog/WindowPictures.h"

namespace nv::uitest {
namespace {

namespace ids = win::ids;

constexpr const char* kTabNames[] = {"parameters", "split", "extraction", "find", "comment", "actions"};

// Fills the editors as a person would have, so that the pictures show content: a string,
// fields and their previews.
void FillForPictures(FrmExtractionChaine& form) {
  form.FrameSplit1.txtChaine.Type(u"alpha;beta;gamma");
  form.FrameSplit1.UpDown1.ClickUp();
  form.FrameSplit1.NovraFlexGrid1.SetTextMatrix(1, 2, u"@Premier");
  form.FrameSplit1.btnPreview.Click();
  form.FrameExtraction1.txtChaine.Type(u"2024;11;22;10;30");
  form.FrameExtraction1.NovraFlexGrid1.ClickPlus();
  form.FrameExtraction1.NovraFlexGrid1.ClickPlus();
  form.FrameExtraction1.NovraFlexGrid1.SetTextMatrix(0, 1, u"@Annee");
  form.FrameExtraction1.NovraFlexGrid1.SetTextMatrix(2, 2, u"2");
  form.FrameExtraction1.btnPreview.Click();
  form.FrameExtraction1.NovraFlexGrid1.EnterCell(3, 1);
  form.FrameRecherche1.txtChaine.Type(u"<a>1</a><a>2</a>");
  form.FrameRecherche1.txtMasque.Type(u"<a>*</a>");
  form.FrameRecherche1.txtFiltre.Type(u"*");
  form.txtComm.Content = u"Découpe la ligne lue.";
  form.FillActionsGrid();
  for (std::int32_t tab = 0; tab < form.SSTab1.Tabs(); ++tab) form.SSTab1.SetTabEnabled(tab, true);
}

class Pictures : public DialogSession, public ::testing::WithParamInterface<std::int32_t> {};

TEST_P(Pictures, EveryTabIsPicturedAndLaidOutCleanly) {
  const std::int32_t language = GetParam();
  const std::string prefix = PicturesFolder() + (language == Language::French ? "\\fr-" : "\\en-");
  // Two actions for the actions tab to list.
  const Text actions = kTasks + u"\\P\\Action";
  test::PutDword(Reg(), actions + u"\\OnErr", u"Go", 1);
  test::PutText(Reg(), actions + u"\\Goto", u"Dest", u"Fin");
  test::PutText(Reg(), actions + u"\\Goto", u"GVar", u"@Compteur");
  test::PutDword(Reg(), actions + u"\\Goto", u"Ope", 4);
  test::PutText(Reg(), actions + u"\\Goto", u"Value", u"3");
  Play(u"P", 0, language, [&](DialogDriver& d, FrmExtractionChaine& form) {
    d.OnUiThread([&] { FillForPictures(form); });
    for (std::int32_t tab = 0; tab < form.SSTab1.Tabs(); ++tab) {
      d.OnUiThread([&] { form.SSTab1.SetTab(tab); });
      d.OnUiThread([&] {
        const std::string path = prefix + std::to_string(tab) + "-" + kTabNames[tab] + ".png";
        EXPECT_TRUE(SaveWindowPicture(d.Dialog(), path)) << path;
        const HWND page = GetDlgItem(d.Dialog(), ids::kFirstPage + tab);
        for (const std::string& problem : LayoutProblems(d.Dialog(), page, ids::kExtraction + ids::kMCheckBox)) {
          ADD_FAILURE() << "tab " << tab << ": " << problem;
        }
      });
    }
    d.Press(ids::kAnnuler);
  });
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, Pictures, ::testing::Values(Language::French, Language::English),
                         [](const auto& tested) { return tested.param == Language::French ? "French" : "English"; });

}  // namespace
}  // namespace nv::uitest
