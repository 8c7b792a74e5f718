// The layout rules themselves, on small windows made to break them one at a time: a rule
// that never fires would let the dialog's pictures pass whatever they show.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/win32/dialog/WindowHandles.h"
#include "tests/windialog/WindowPictures.h"

namespace nv::uitest {
namespace {

struct Child {
  const wchar_t* windowClass;
  DWORD style;
  const wchar_t* text;
  RECT bounds;  // left, top, width, height
};

struct Case {
  const char* name;
  std::vector<Child> children;
  const char* expected;  // a part of the one problem expected; null for none
};

TEST(LayoutRules, FireOnTheFaultTheyNameAndOnNothingElse) {
  const Case cases[] = {
      {"a clean row", {{L"STATIC", SS_LEFT, L"Name", {10, 10, 60, 16}}, {L"EDIT", WS_BORDER, L"", {80, 8, 100, 20}}}, nullptr},
      {"a label inside its frame",
       {{L"BUTTON", BS_GROUPBOX, L"Options", {5, 5, 200, 60}}, {L"STATIC", SS_LEFT, L"Inside", {20, 30, 80, 16}}},
       nullptr},
      {"a caption wider than its button", {{L"BUTTON", BS_PUSHBUTTON, L"&Supprimer les espaces avant", {10, 10, 40, 24}}}, "caption is"},
      {"a check box too narrow", {{L"BUTTON", BS_CHECKBOX, L"Sensible à la casse", {10, 10, 60, 16}}}, "caption is"},
      {"overlapping entries", {{L"EDIT", WS_BORDER, L"", {10, 10, 100, 20}}, {L"EDIT", WS_BORDER, L"", {60, 15, 100, 20}}}, "overlaps"},
      {"a label outside its parent", {{L"STATIC", SS_LEFT, L"Far", {250, 10, 80, 16}}}, "outside"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const win::unique_hwnd parent(
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 300, 120, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr));
    const auto font = reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT));
    int id = 1;
    for (const Child& child : c.children) {
      const HWND made = CreateWindowExW(0, child.windowClass, child.text, WS_CHILD | WS_VISIBLE | child.style, child.bounds.left,
                                        child.bounds.top, child.bounds.right, child.bounds.bottom, parent.get(),
                                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id++)), GetModuleHandleW(nullptr), nullptr);
      SendMessageW(made, WM_SETFONT, font, FALSE);
    }
    ShowWindow(parent.get(), SW_SHOWNA);
    const std::vector<std::string> problems = LayoutProblems(parent.get(), nullptr, 0);
    if (c.expected == nullptr) {
      EXPECT_TRUE(problems.empty()) << problems.front();
    } else {
      ASSERT_EQ(problems.size(), 1u);
      EXPECT_NE(problems.front().find(c.expected), std::string::npos) << problems.front();
    }
  }
}

}  // namespace
}  // namespace nv::uitest
