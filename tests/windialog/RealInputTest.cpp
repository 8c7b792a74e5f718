// The dialog driven by real input, as a person at the screen drives it: keys and mouse
// through the display, the dialog opened by nvhost.exe edit in a process of its own or
// by ShowWrapper in this one, in both languages. Along the way the screen is read (focus,
// the check box's place, the tip's words) and pictured; afterwards the registry.
#include <gtest/gtest.h>

#include "platform/win32/Win32Registry.h"
#include "platform/win32/dialog/GridWindow.h"
#include "platform/win32/dialog/HintWords.h"
#include "platform/win32/dialog/TaskDialogIds.h"
#include "platform/win32/dialog/TaskDialogWindow.h"
#include "store/ModuleState.h"
#include "store/RegistryOperations.h"
#include "store/TaskStore.h"
#include "tests/com/PluginFixture.h"
#include "tests/windialog/DialogSession.h"
#include "tests/windialog/ScreenState.h"
#include "tests/windialog/WindowPictures.h"
#include "tests/windialog/XInput.h"

namespace nv::uitest {
namespace {

namespace ids = win::ids;
constexpr int kSplit = ids::kSplit;
constexpr int kSubstrings = ids::kExtraction;
constexpr int kEtatWrite = 8;
constexpr int kShowWrapper = 22;

enum class Opener { Nvhost, ShowWrapper };

struct Setting {
  Opener opener;
  bool french;
};

// What differs between the languages: the words on screen and the accelerators.
struct Words {
  const wchar_t* notAVariable;
  const wchar_t* incorrectValue;
  const char* apply;
  const char* confirm;
};

Words WordsOf(bool french) {
  if (french) {
    return {L"Cette valeur ne représente pas une variable, elle ne sera donc pas prise en compte.", L"Valeur incorrecte", "alt+p", "alt+v"};
  }
  return {L"This string does not represent a Novra variable. It will not be accepted.", L"Incorrect value", "alt+p", "alt+c"};
}

constexpr char kSplitString[] = "Dupont;Jean-Baptiste Alexandre;08:00:00.000;Lyon";
constexpr char kSubstringsString[] = "Martin;Dupont-Lefebvre de la Fontaine;Lyon";

POINT Below(POINT point, int by) { return {point.x, point.y + by}; }

class RealInput : public comtest::PluginTest, public ::testing::WithParamInterface<Setting> {
 protected:
  void SetUp() override {
    if (const std::string missing = XInput::Missing(); !missing.empty()) GTEST_SKIP() << missing;
    comtest::PluginTest::SetUp();
    Module().PlatformRegistry = &registry_;
    SetRegistryContext(static_cast<std::int32_t>(0x80000002), u"SOFTWARE\\NOVRA\\Scenarios\\S\\Taches");
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, comtest::kTaskKey);
  }
  void TearDown() override {
    Module().PlatformRegistry = nullptr;
    comtest::PluginTest::TearDown();
  }

  std::string Picture(const char* step) {
    const Setting setting = GetParam();
    return PicturesFolder() + "\\real-" + (setting.french ? "fr-" : "en-") +
           (setting.opener == Opener::Nvhost ? "nvhost-" : "showwrapper-") + std::to_string(++pictures_) + "-" + step + ".png";
  }

  // A split task: the field count by the up-down's keys, variable names typed down the
  // column, a name that is not a variable, the separator by arrows; then Apply.
  void SplitByKeyboard(const ScreenState& s, const XInput& x, const Words& words, const win::HintWords& hints);
  // The same task as substrings: fields by Ctrl+Plus and Ctrl+Minus, the flag's check box
  // through scrolling, a long value's tip by keyboard; then Confirm.
  void SubstringsByKeyboardAndMouse(const ScreenState& s, const XInput& x, const Words& words, const win::HintWords& hints);
  void PlayAll(HWND dialog);

  Win32Registry registry_;
  int pictures_ = 0;
};

// Presses Tab until `target` has the focus; false when it never came.
bool TabTo(const ScreenState& s, const XInput& x, HWND target) {
  for (int presses = 0; presses < 12; ++presses) {
    if (s.Focused() == target) return true;
    x.Keys("Tab");
    Eventually([&] { return s.Focused() != nullptr; });
  }
  return s.Focused() == target;
}

void RealInput::SplitByKeyboard(const ScreenState& s, const XInput& x, const Words& words, const win::HintWords& hints) {
  // Ctrl+Tab brings the function's tab forward, and the focus goes with it.
  x.Keys("ctrl+Tab");
  ASSERT_TRUE(Eventually([&] { return s.Focused() == s.Control(kSplit + ids::kTxtChaine); })) << "focus on the string entry";
  x.Type(kSplitString);
  x.Click(s.Centre(s.Control(kSplit + ids::kBtnCalculeValeurChaine)));
  // The value box shows the whole value, cut with an ellipsis on screen.
  EXPECT_TRUE(Eventually([&] { return s.Text(kSplit + ids::kLblResultatChaine) == L"Dupont;Jean-Baptiste Alexandre;08:00:00.000;Lyon"; }));
  EXPECT_TRUE(GetWindowLongPtrW(s.Control(kSplit + ids::kLblResultatChaine), GWL_STYLE) & SS_ENDELLIPSIS);

  // Arrows among the separator options choose as they move.
  x.Click(s.Centre(s.Control(kSplit + ids::kSeparator0 + 1)));
  x.Keys("Left");
  EXPECT_TRUE(Eventually([&] { return s.Checked(kSplit + ids::kSeparator0) && s.Text(kSplit + ids::kTxtSeparator) == L","; }));
  EXPECT_EQ(s.Focused(), s.Control(kSplit + ids::kSeparator0));
  x.Keys("Right");
  EXPECT_TRUE(Eventually([&] { return s.Checked(kSplit + ids::kSeparator0 + 1) && s.Text(kSplit + ids::kTxtSeparator) == L";"; }));

  // The count box hands the focus to the up-down, which answers Up and Down and says so.
  const HWND upDown = s.Control(kSplit + ids::kUpDown1);
  x.Click(s.Centre(s.Control(kSplit + ids::kTxtFieldsCount)));
  ASSERT_TRUE(Eventually([&] { return s.Focused() == upDown; })) << "focus on the up-down";
  EXPECT_TRUE(Eventually([&] { return s.Tip() == hints.fieldCount; }));
  x.Keys("Up Up Up Up Down Up");
  EXPECT_TRUE(Eventually([&] { return s.Text(kSplit + ids::kTxtFieldsCount) == L"4"; }));
  EXPECT_TRUE(s.SavePicture(Picture("up-down-by-keys")));
  // Four rows fit: no scroll bar shows.
  const HWND grid = s.Control(kSplit + ids::kGrid);
  EXPECT_FALSE(GetWindowLongPtrW(grid, GWL_STYLE) & (WS_VSCROLL | WS_HSCROLL));

  // Tabbed into, the grid shows its current cell at once: a variable cell of a data row.
  ASSERT_TRUE(TabTo(s, x, grid));
  EXPECT_TRUE(Eventually([&] { return s.GridCurrent(kSplit + ids::kGrid).x == 2; }));
  EXPECT_GE(s.GridCurrent(kSplit + ids::kGrid).y, 1);
  x.Keys("Up Up Up");
  EXPECT_TRUE(Eventually([&] { return s.GridCurrent(kSplit + ids::kGrid).y == 1; }));
  // Down ends the edit and goes on to the next row.
  x.Type("@Nom");
  x.Keys("Down");
  x.Type("@Prenom");
  x.Keys("Down");
  EXPECT_TRUE(Eventually([&] { return s.GridCurrent(kSplit + ids::kGrid).y == 3; }));
  // A name that is not a variable, left by Tab: the message, then back to the cell.
  x.Type("Heure");
  x.Keys("Tab");
  const HWND box = s.ShownMessageBox();
  ASSERT_NE(box, nullptr) << "no message about the name";
  EXPECT_EQ(s.Text(GetDlgItem(box, 0xFFFF)), words.notAVariable);
  x.Keys("Return");
  EXPECT_TRUE(Eventually([&] { return s.Focused() == grid; })) << "the focus is back on the cell";
  EXPECT_EQ(s.GridCurrent(kSplit + ids::kGrid).y, 3);

  // Preview; the long value shows whole in a tip under the mouse.
  x.Click(s.Centre(s.Control(kSplit + ids::kBtnPreview)));
  x.MoveTo(s.CellCentre(kSplit + ids::kGrid, 2, 1));
  EXPECT_TRUE(Eventually([&] { return s.Tip() == L"Jean-Baptiste Alexandre"; })) << "the tip of a cut value";
  EXPECT_TRUE(s.SavePicture(Picture("tip-over-long-value")));
  // Dragging the header's border widens the column; the value then fits and needs no tip.
  const RECT header = s.CellOnScreen(kSplit + ids::kGrid, 0, 1);
  const LONG before = header.right - header.left;
  x.Drag({header.right, (header.top + header.bottom) / 2}, {header.right + 140, (header.top + header.bottom) / 2});
  EXPECT_TRUE(Eventually([&] {
    const RECT widened = s.CellOnScreen(kSplit + ids::kGrid, 0, 1);
    return widened.right - widened.left == before + 140;
  }));
  x.MoveTo(s.CellCentre(kSplit + ids::kGrid, 2, 1));
  EXPECT_TRUE(Eventually([&] { return s.Tip().empty(); }));
  EXPECT_TRUE(s.SavePicture(Picture("widened-column")));
  // A double click on the border fits the column to its texts: narrower, the value whole.
  const RECT widened = s.CellOnScreen(kSplit + ids::kGrid, 0, 1);
  x.DoubleClick({widened.right, (widened.top + widened.bottom) / 2});
  EXPECT_TRUE(Eventually([&] {
    const RECT fitted = s.CellOnScreen(kSplit + ids::kGrid, 0, 1);
    return fitted.right - fitted.left < widened.right - widened.left && fitted.right - fitted.left > before;
  }));
  x.MoveTo(Below(s.CellCentre(kSplit + ids::kGrid, 2, 1), 0));
  EXPECT_TRUE(Eventually([&] { return s.Tip().empty(); }));

  x.Keys(words.apply);
  TaskDefinition stored;
  ASSERT_TRUE(Eventually([&] { return RegistryKeyExists(u"T1"); })) << "Apply stored nothing";
  Eventually([&] {
    LoadTaskDefinition(u"T1", stored);
    return stored.Fields.size() == 4;
  });
  EXPECT_EQ(stored.Fonction, 0);
  EXPECT_EQ(stored.Chaine, u"Dupont;Jean-Baptiste Alexandre;08:00:00.000;Lyon");
  EXPECT_EQ(stored.Separateur, u";");
  ASSERT_EQ(stored.Fields.size(), 4u);
  EXPECT_EQ(stored.Fields[0].Var, u"@Nom");
  EXPECT_EQ(stored.Fields[1].Var, u"@Prenom");
  EXPECT_EQ(stored.Fields[2].Var, u"");  // not a variable: warned about, not kept
}

void RealInput::SubstringsByKeyboardAndMouse(const ScreenState& s, const XInput& x, const Words& words,
                                             const win::HintWords& hints) {
  // Back to the parameters, where the function list has the focus; Down chooses the next.
  x.Keys("ctrl+Tab");
  ASSERT_TRUE(Eventually([&] { return s.Focused() == s.Control(ids::kCbFonction); })) << "focus on the function list";
  x.Keys("Down ctrl+Tab");
  ASSERT_TRUE(Eventually([&] { return s.Focused() == s.Control(kSubstrings + ids::kTxtChaine); }));
  x.Type(kSubstringsString);
  const int gridId = kSubstrings + ids::kGrid;
  const HWND grid = s.Control(gridId);
  ASSERT_TRUE(TabTo(s, x, grid));

  // The plus and minus buttons have keys, and words that say so.
  x.Keys("ctrl+plus ctrl+plus ctrl+plus ctrl+plus ctrl+plus ctrl+plus ctrl+plus ctrl+plus ctrl+minus ctrl+plus");
  EXPECT_TRUE(Eventually([&] { return s.GridCols(gridId) == 9; })) << "eight fields";
  x.MoveTo(s.Centre(GetDlgItem(grid, win::GridWindow::kPlusId)));
  EXPECT_TRUE(Eventually([&] { return s.Tip() == hints.addField; }));
  // Eight fields do not fit across: the horizontal bar shows, the vertical one does not.
  EXPECT_TRUE(GetWindowLongPtrW(grid, GWL_STYLE) & WS_HSCROLL);
  EXPECT_FALSE(GetWindowLongPtrW(grid, GWL_STYLE) & WS_VSCROLL);

  // The first field, reached by arrows: its variable, and the second piece, typed down
  // the column.
  x.Keys("Up Up Up Up Left Left Left Left Left Left Left");
  EXPECT_TRUE(Eventually([&] { return s.GridCurrent(gridId).y == 0 && s.GridCurrent(gridId).x == 1; }));
  x.Type("@Nom");
  x.Keys("Down");
  x.Type("1");
  x.Keys("Down");
  x.Type("1");
  x.Keys("Down");
  EXPECT_TRUE(Eventually([&] { return s.GridCurrent(gridId).y == 3 && s.GridCurrent(gridId).x == 1; }));
  x.Click(s.Centre(s.Control(kSubstrings + ids::kBtnPreview)));

  // Down from the end reached the flag, whose check box lies over its cell.
  const HWND check = s.Control(kSubstrings + ids::kMCheckBox);
  ASSERT_TRUE(Eventually([&] { return IsWindowVisible(check) != FALSE; }));
  const RECT cell = s.CellOnScreen(gridId, 3, 1);
  RECT box = s.ScreenRect(check);
  RECT inside{};
  IntersectRect(&inside, &box, &cell);
  EXPECT_TRUE(EqualRect(&inside, &box)) << "the check box lies over its cell";
  // On its square, at its left.
  x.Click({box.left + 7, (box.top + box.bottom) / 2});
  EXPECT_TRUE(Eventually([&] { return s.Checked(kSubstrings + ids::kMCheckBox); }));
  EXPECT_EQ(s.Focused(), check);

  // Scrolled one column on, the box moves with its cell, out of sight; and back.
  RECT client{};
  GetClientRect(grid, &client);
  MapWindowPoints(grid, nullptr, reinterpret_cast<POINT*>(&client), 2);
  const int arrow = GetSystemMetrics(SM_CXHSCROLL);
  const int barMiddle = client.bottom + GetSystemMetrics(SM_CYHSCROLL) / 2;
  x.Click({client.right - arrow / 2, barMiddle});
  const LONG columnWidth = cell.right - cell.left;
  EXPECT_TRUE(Eventually([&] { return s.ScreenRect(check).left == box.left - columnWidth; })) << "the box follows its cell";
  EXPECT_FALSE(IsWindowVisible(check)) << "nothing of the box shows outside the cells";
  EXPECT_TRUE(s.SavePicture(Picture("check-box-scrolled-out")));
  x.Click({client.left + arrow / 2, barMiddle});
  EXPECT_TRUE(Eventually([&] { return s.ScreenRect(check).left == box.left && IsWindowVisible(check); }));
  EXPECT_TRUE(s.Checked(kSubstrings + ids::kMCheckBox)) << "shown again with its state";
  x.Click(s.CellCentre(gridId, 2, 2));
  x.Keys("Down Down");
  EXPECT_TRUE(Eventually([&] { return s.Tip() == L"Martin;Dupont-Lefebvre de la Fontaine;Lyon"; })) << "the value's tip by keyboard";
  EXPECT_TRUE(s.SavePicture(Picture("tip-of-current-value")));

  // A field without its start: the check's message, then the separator box as the
  // dialog's rules say; the start typed again.
  x.Click(s.CellCentre(gridId, 1, 2));
  x.Keys("F2 Delete Down");
  x.Keys(words.confirm);
  const HWND box506 = s.ShownMessageBox();
  ASSERT_NE(box506, nullptr) << "no message about the empty start";
  EXPECT_EQ(s.Text(GetDlgItem(box506, 0xFFFF)), words.incorrectValue);
  x.Keys("Return");
  EXPECT_TRUE(Eventually([&] { return s.Focused() == s.Control(kSubstrings + ids::kTxtSeparator); }));
  x.Click(s.CellCentre(gridId, 1, 2));
  x.Type("0");
  x.Keys("Down");

  x.Keys(words.confirm);
  ASSERT_TRUE(Eventually([&] { return !IsWindow(s.Dialog()); })) << "Confirm closed the dialog";
  TaskDefinition stored;
  LoadTaskDefinition(u"T1", stored);
  EXPECT_EQ(stored.Fonction, 1);
  EXPECT_EQ(stored.Chaine, u"Martin;Dupont-Lefebvre de la Fontaine;Lyon");
  ASSERT_EQ(stored.Fields.size(), 8u);
  EXPECT_EQ(stored.Fields[0].Var, u"@Nom");
  EXPECT_EQ(stored.Fields[0].Start, u"1");
  EXPECT_EQ(stored.Fields[0].End, u"1");
  // The system's word for true, whatever the dialog's language.
  EXPECT_TRUE(stored.Fields[0].ShowSep == u"True" || stored.Fields[0].ShowSep == u"Vrai") << "the flag was checked";
}

void RealInput::PlayAll(HWND dialog) {
  const ScreenState s(dialog);
  const XInput x;
  const bool french = GetParam().french;
  const Words words = WordsOf(french);
  const win::HintWords& hints = win::HintWordsFor(french ? 0 : 10000);
  EXPECT_TRUE(s.SavePicture(Picture("opened")));
  SplitByKeyboard(s, x, words, hints);
  if (HasFatalFailure()) return;
  SubstringsByKeyboardAndMouse(s, x, words, hints);
}

TEST_P(RealInput, APersonConfiguresATaskByKeyboardAndMouse) {
  const Setting setting = GetParam();
  const char* language = setting.french ? "fr" : "en";
  if (setting.opener == Opener::ShowWrapper) {
    Initialize(setting.french ? 0 : 10000);
    EXPECT_HRESULT_SUCCEEDED(CallAt(kEtatWrite, static_cast<short>(0)));
    LONG result = -1;
    const DWORD uiThread = GetCurrentThreadId();
    PlayWhileOpen([&] { EXPECT_HRESULT_SUCCEEDED(CallAt(kShowWrapper, &result)); }, [&] { return WaitForTaskDialog(uiThread); },
                  [&](DialogDriver& d) { PlayAll(d.Dialog()); });
    EXPECT_EQ(result, 1);
    return;
  }
  std::wstring command = L"\"" + comtest::BesideTestProgram(L"nvhost.exe") + L"\" edit S T1 --new --lang " +
                         (setting.french ? L"fr" : L"en");
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process));
  const win::unique_kernel_handle processHandle(process.hProcess);
  const win::unique_kernel_handle threadHandle(process.hThread);
  HWND dialog = nullptr;
  Eventually([&] {
    dialog = FindWindowW(win::TaskDialogWindow::kClassName, nullptr);
    DWORD owner = 0;
    if (dialog) GetWindowThreadProcessId(dialog, &owner);
    return dialog && owner == process.dwProcessId && IsWindowVisible(dialog);
  });
  ASSERT_NE(dialog, nullptr) << "nvhost.exe " << language << " showed no dialog";
  PlayAll(dialog);
  if (WaitForSingleObject(process.hProcess, 20000) != WAIT_OBJECT_0) {
    TerminateProcess(process.hProcess, 99);
    FAIL() << "nvhost.exe did not end";
  }
  DWORD exitCode = 0;
  GetExitCodeProcess(process.hProcess, &exitCode);
  EXPECT_EQ(exitCode, 0u) << "confirmed";
}

INSTANTIATE_TEST_SUITE_P(BothWaysBothLanguages, RealInput,
                         ::testing::Values(Setting{Opener::Nvhost, false}, Setting{Opener::Nvhost, true},
                                           Setting{Opener::ShowWrapper, false}, Setting{Opener::ShowWrapper, true}),
                         [](const auto& tested) {
                           return std::string(tested.param.opener == Opener::Nvhost ? "Nvhost" : "ShowWrapper") +
                                  (tested.param.french ? "French" : "English");
                         });

}  // namespace
}  // namespace nv::uitest
