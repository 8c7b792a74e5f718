// The dialog as a host opens it: the plug-in created by ProgID from the registered
// NVextch.dll, the host's classes served by the registered stand-in, ShowWrapper called
// by its slot; a person at the dialog; then the registry.
#include <gtest/gtest.h>

#include "platform/win32/Win32Registry.h"
#include "platform/win32/dialog/TaskDialogIds.h"
#include "platform/win32/dialog/TaskDialogWindow.h"
#include "platform/win32/standin/ActionDialogs.h"
#include "store/ModuleState.h"
#include "store/RegistryOperations.h"
#include "store/TaskStore.h"
#include "tests/com/PluginFixture.h"
#include "tests/windialog/DialogSession.h"
#include "tests/windialog/ScreenState.h"

namespace nv::uitest {
namespace {

namespace ids = win::ids;
constexpr int kSplit = ids::kSplit;
constexpr int kEtatWrite = 8;
constexpr int kShowWrapper = 22;
constexpr LONG kEnglish = 10000;

class ComDialog : public comtest::PluginTest {
 protected:
  void SetUp() override {
    comtest::PluginTest::SetUp();
    // The suite reads back what the DLL stored through the same store code.
    Module().PlatformRegistry = &registry_;
    SetRegistryContext(static_cast<std::int32_t>(0x80000002), u"SOFTWARE\\NOVRA\\Scenarios\\S\\Taches");
  }
  void TearDown() override {
    Module().PlatformRegistry = nullptr;
    comtest::PluginTest::TearDown();
  }

  // ShowWrapper on task T1 of scenario S with `etat`, while `play` plays the person.
  LONG Show(short etat, const std::function<void(DialogDriver&)>& play) {
    Initialize(kEnglish);
    EXPECT_HRESULT_SUCCEEDED(CallAt(kEtatWrite, etat));
    LONG result = -1;
    const DWORD uiThread = GetCurrentThreadId();
    PlayWhileOpen([&] { EXPECT_HRESULT_SUCCEEDED(CallAt(kShowWrapper, &result)); },
                  [&] { return WaitForTaskDialog(uiThread); }, play);
    return result;
  }

 private:
  Win32Registry registry_;
};

TEST_F(ComDialog, ANewTaskIsDefinedConfirmedAndOpensAgainStored) {
  const LONG created = Show(0, [](DialogDriver& d) {
    d.ClickTab(L"Extraction");
    d.ClickControl(kSplit + ids::kTxtChaine);
    d.Type(L"1;2");
    d.ClickUpDown(kSplit + ids::kUpDown1, true);
    d.ClickUpDown(kSplit + ids::kUpDown1, true);
    d.ClickCell(kSplit + ids::kGrid, 1, 2);
    d.Type(L"@A");
    d.Key(VK_RETURN);
    d.Press(kSplit + ids::kBtnPreview);
    EXPECT_EQ(d.Cell(kSplit + ids::kGrid, 1, 1), L"1");
    EXPECT_EQ(d.Cell(kSplit + ids::kGrid, 2, 1), L"2");
    d.Press(ids::kValider);
  });
  EXPECT_EQ(created, 1);
  TaskDefinition stored;
  LoadTaskDefinition(u"T1", stored);
  EXPECT_EQ(stored.Fonction, 0);
  EXPECT_EQ(stored.Chaine, u"1;2");
  EXPECT_EQ(stored.Separateur, u";");
  ASSERT_EQ(stored.Fields.size(), 2u);
  EXPECT_EQ(stored.Fields[0].Var, u"@A");

  // Opening the stored task lists its actions through the host's editor and loads it.
  const LONG reopened = Show(1, [](DialogDriver& d) {
    EXPECT_EQ(d.Text(ids::kTxtTache), L"T1");
    EXPECT_EQ(d.Text(kSplit + ids::kTxtChaine), L"1;2");
    EXPECT_EQ(d.Cell(kSplit + ids::kGrid, 1, 2), L"@A");
    EXPECT_EQ(d.Text(kSplit + ids::kTxtFieldsCount), L"2");
    d.Press(ids::kAnnuler);
  });
  EXPECT_EQ(reopened, 0);
}

TEST_F(ComDialog, CancelledNothingIsStored) {
  const LONG result = Show(0, [](DialogDriver& d) {
    // Help goes to the host's actions editor, which shows its own window.
    d.Press(ids::kHelp);
    const std::wstring help = d.AnswerMessageBox(ActionDialogIds::kHelpText);
    EXPECT_NE(help.find(L"(@N"), std::wstring::npos) << "the help of the task type, naming a variable reference";
    d.ClickTab(L"Extraction");
    d.ClickControl(kSplit + ids::kTxtChaine);
    d.Type(L"x;y");
    d.Press(ids::kAnnuler);
  });
  EXPECT_EQ(result, 0);
  EXPECT_FALSE(RegistryKeyExists(u"T1"));
}

// The task dialog that process `processId` shows; null when none came in time.
HWND WaitForDialogOf(DWORD processId) {
  HWND found = nullptr;
  for (int tries = 0; tries < 1000 && found == nullptr; ++tries) {
    found = uitest::VisibleWindowOf(processId, win::TaskDialogWindow::kClassName);
    if (found == nullptr) Sleep(20);
  }
  return found;
}

// nvhost.exe edit without a button option opens the dialog for the person at the screen,
// through the registered server; what that person presses is the exit status.
TEST_F(ComDialog, NvhostEditOpensTheDialogOnScreen) {
  struct Case {
    const wchar_t* name;
    const wchar_t* arguments;
    bool confirm;
    DWORD exitCode;
    bool stored;
  };
  const Case cases[] = {
      {L"closed", L"edit S T1 --new --lang en", false, 1, false},
      {L"confirmed", L"edit S T1 --lang en", true, 0, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.name, c.name + wcslen(c.name)));
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, comtest::kTaskKey);
    if (c.stored) {
      // A split task that passes the checks as it stands.
      comtest::WriteTaskValue(L"Fonction", L"0");
      comtest::WriteTaskValue(L"Chaine", L"a;b");
      comtest::WriteTaskValue(L"Separateur", L";");
      comtest::WriteTaskValue(L"Fields.Count", L"1");
      comtest::WriteTaskValue(L"Fields(1).Var", L"@A");
    }
    std::wstring command = L"\"" + comtest::BesideTestProgram(L"nvhost.exe") + L"\" " + c.arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                               &process));
    const win::unique_kernel_handle processHandle(process.hProcess);
    const win::unique_kernel_handle threadHandle(process.hThread);
    const HWND dialog = WaitForDialogOf(process.dwProcessId);
    EXPECT_NE(dialog, nullptr) << "nvhost.exe showed no dialog";
    if (dialog != nullptr) {
      // Plain posted input: the dialog lives in another process.
      const HWND target = c.confirm ? DialogDriver(dialog, 0).Find(ids::kValider) : dialog;
      PostMessageW(target, c.confirm ? BM_CLICK : WM_CLOSE, 0, 0);
    }
    if (WaitForSingleObject(process.hProcess, 30000) != WAIT_OBJECT_0) {
      TerminateProcess(process.hProcess, 99);
      ADD_FAILURE() << "nvhost.exe did not end";
    }
    DWORD exitCode = 0;
    GetExitCodeProcess(process.hProcess, &exitCode);
    EXPECT_EQ(exitCode, c.exitCode);
    EXPECT_EQ(RegistryKeyExists(u"T1"), c.stored);
    if (c.stored) {
      EXPECT_EQ(ReadRegistryValue(u"T1", u"Type"), Variant::FromLong(39)) << "saved by the dialog";
    }
  }
}

}  // namespace
}  // namespace nv::uitest
