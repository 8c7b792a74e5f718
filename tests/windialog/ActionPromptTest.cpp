// The stand-in host's action dialogs, filled in by a second thread as a person would: the
// values they give back for each kind, nothing on Cancel, and the help text shown.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/win32/standin/ActionDialogs.h"
#include "tests/windialog/DialogDriver.h"

namespace nv::uitest {
namespace {

namespace ids = ActionDialogIds;

struct Step {
  enum Kind { Click, Type, Pick } kind;
  int id;
  std::wstring text;
  int index = 0;
};

// The dialog box the thread shows; null when none came in time.
HWND WaitForDialogBox(DWORD thread) {
  for (int tries = 0; tries < 500; ++tries) {
    const HWND found = DialogBoxOf(thread);
    if (found) return found;
    Sleep(20);
  }
  return nullptr;
}

// Plays `steps` on the dialog the call opens, then presses OK (or Cancel).
template <typename Call>
auto Answer(Call call, const std::vector<Step>& steps, bool ok) {
  const DWORD thread = GetCurrentThreadId();
  std::thread person([&] {
    const HWND box = WaitForDialogBox(thread);
    if (!box) {
      ADD_FAILURE() << "no dialog came";
      return;
    }
    for (const Step& step : steps) {
      const HWND item = GetDlgItem(box, step.id);
      switch (step.kind) {
        case Step::Click: SendMessageW(item, BM_CLICK, 0, 0); break;
        case Step::Type: SendMessageW(item, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(step.text.c_str())); break;
        case Step::Pick:
          SendMessageW(item, CB_SETCURSEL, static_cast<WPARAM>(step.index), 0);
          SendMessageW(box, WM_COMMAND, MAKEWPARAM(step.id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(item));
          break;
      }
    }
    PostMessageW(box, WM_COMMAND, ok ? IDOK : IDCANCEL, 0);
  });
  auto result = call();
  person.join();
  return result;
}

struct Case {
  const char* name;
  std::optional<std::int32_t> changesOf;  // none: a new action
  std::vector<Step> steps;
  bool ok;
  std::optional<ActionValues> expected;
};

void ExpectSame(const std::optional<ActionValues>& actual, const std::optional<ActionValues>& expected) {
  ASSERT_EQ(actual.has_value(), expected.has_value());
  if (!expected) return;
  EXPECT_EQ(actual->kind, expected->kind);
  EXPECT_EQ(actual->go, expected->go);
  EXPECT_EQ(actual->loop, expected->loop);
  EXPECT_EQ(actual->dest, expected->dest);
  EXPECT_EQ(actual->variable, expected->variable);
  EXPECT_EQ(actual->ope, expected->ope);
  EXPECT_EQ(actual->check, expected->check);
  EXPECT_EQ(actual->value, expected->value);
}

TEST(ActionPrompt, GivesBackWhatThePersonSet) {
  ActionValues onErr;
  onErr.kind = 0;
  onErr.go = 1;
  onErr.loop = 1;
  ActionValues jump;
  jump.kind = 3;
  jump.dest = u"Fin";
  jump.variable = u"@V";
  jump.ope = 2;
  jump.check = 1;
  jump.value = u"3";
  ActionValues valueOnly;
  valueOnly.kind = 2;
  valueOnly.value = u"x";
  ActionValues goCleared;
  goCleared.kind = 0;
  goCleared.go = 0;

  const Case cases[] = {
      {"new action on errors", std::nullopt, {{Step::Click, ids::kGo, L""}, {Step::Click, ids::kLoop, L""}}, true, onErr},
      {"new jump",
       std::nullopt,
       {{Step::Pick, ids::kKind, L"", 3},
        {Step::Type, ids::kDest, L"Fin"},
        {Step::Type, ids::kVariable, L"@V"},
        {Step::Pick, ids::kOperator, L"", 2},
        {Step::Type, ids::kValue, L"3"},
        {Step::Click, ids::kCheck, L""}},
       true,
       jump},
      {"new action cancelled", std::nullopt, {{Step::Click, ids::kGo, L""}}, false, std::nullopt},
      // Changes start from "unchanged": only what was set comes back.
      {"changed value only", 2, {{Step::Type, ids::kValue, L"x"}}, true, valueOnly},
      {"greyed flag clicked once clears it", 0, {{Step::Click, ids::kGo, L""}}, true, goCleared},
  };
  const std::unique_ptr<ActionPrompt> prompt = MakeDialogActionPrompt(10000);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const std::optional<ActionValues> got = Answer(
        [&] { return c.changesOf ? prompt->AskChanges(*c.changesOf) : prompt->AskNewAction(); }, c.steps, c.ok);
    ExpectSame(got, c.expected);
  }
}

TEST(ActionPrompt, HelpShowsItsText) {
  const std::unique_ptr<ActionPrompt> prompt = MakeDialogActionPrompt(0);
  const DWORD thread = GetCurrentThreadId();
  std::wstring shown;
  std::thread person([&] {
    const HWND box = WaitForDialogBox(thread);
    if (!box) {
      ADD_FAILURE() << "no help came";
      return;
    }
    wchar_t text[256] = {};
    SendMessageW(GetDlgItem(box, ids::kHelpText), WM_GETTEXT, 256, reinterpret_cast<LPARAM>(text));
    shown = text;
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  prompt->ShowHelp(u"Ligne une\nLigne deux");
  person.join();
  EXPECT_EQ(shown, L"Ligne une\r\nLigne deux");
}

}  // namespace
}  // namespace nv::uitest
