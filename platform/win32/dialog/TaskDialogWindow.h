#pragma once
// The task dialog on screen: real controls bound to the form's control layer, shown
// modally on the calling thread. After every user event each window is brought back in
// line with the model, which has no change events of its own.
#include <windows.h>

#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "dialog/FrmExtractionChaine.h"
#include "platform/win32/dialog/ControlBindings.h"
#include "platform/win32/dialog/ControlHint.h"
#include "platform/win32/dialog/GridWindow.h"
#include "platform/win32/dialog/TipWindow.h"
#include "platform/win32/dialog/Win32UiServices.h"
#include "platform/win32/dialog/WindowHandles.h"

namespace nv::win {

// What a tool told of the dialog on screen gets, on the dialog's thread, while it is up.
struct ShownTaskDialog {
  FrmExtractionChaine& form;
  HWND window;
  // Runs work on the model as one of the dialog's user events (a failure closes the
  // dialog; every window follows the model afterwards). On the dialog's thread only.
  std::function<void(const std::function<void()>&)> runUserEvent;
};

class TaskDialogWindow final : public ShownDialog {
 public:
  // Posted with an event handle of this process in lParam: the dialog sets the event once
  // it has handled every message posted before, so that input tools know it has settled.
  static constexpr UINT kSignalWhenReached = WM_APP + 10;
  static constexpr wchar_t kClassName[] = L"NvTaskDialog";

  // `resources` holds the icon the picture box names (the plug-in's DLL).
  TaskDialogWindow(FrmExtractionChaine& form, Win32UiServices& ui, HMODULE resources);
  ~TaskDialogWindow() override;
  TaskDialogWindow(const TaskDialogWindow&) = delete;
  TaskDialogWindow& operator=(const TaskDialogWindow&) = delete;

  // Shows the window over the thread's active window, which stays disabled meanwhile,
  // and runs the messages until the form is hidden. A failure of the model in an event
  // closes the dialog and comes out here. `shown` hears of the window once it is up.
  void RunModal(const std::function<void(const ShownTaskDialog&)>& shown = {});

  HWND Window() const override { return window_.get(); }
  void Focus(Control& control) override;
  void TabToNext() override;
  void MessageClosed(HWND focused) override;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  void Create(HWND owner);
  void BuildPages();
  void BuildParameters(HWND page);
  void BuildSplit(HWND page);
  void BuildExtraction(HWND page);
  void BuildRecherche(HWND page);
  void BuildComment(HWND page);
  void BuildActions(HWND page);

  // The controls the three editors share, each at the place its row gives.
  void BuildChaineRow(HWND page, int base, EditorBase& editor);
  void BuildSeparatorRows(HWND page, int base, SeparatorGroup& group);
  void BuildCountRow(HWND page, int base, RowFieldsEditor& editor, int top);
  GridWindow& BuildGrid(HWND page, int id, Control& model, std::unique_ptr<GridSource> source, RECT bounds);
  GridWindow& BuildButtonsAndGrid(HWND page, int base, EditorBase& editor, int rowTop);

  // Creates a control window in 96-DPI pixels, scaled to the screen.
  HWND Make(HWND parent, const wchar_t* windowClass, DWORD style, DWORD exStyle, int id, RECT bounds96);
  template <typename B, typename... Args>
  B& Bind(Args&&... args) {
    auto binding = std::make_unique<B>(std::forward<Args>(args)...);
    B& bound = *binding;
    Adopt(std::move(binding));
    return bound;
  }
  void Adopt(std::unique_ptr<Binding> binding);

  // Runs a user event on the model, then brings every window in line with it.
  void UserEvent(const std::function<void()>& action);
  // Runs it with a failure caught: the failure closes the dialog. False when it failed.
  bool Guarded(const std::function<void()>& action);
  // A grid's event: after a message about its cell the person is sent back to the cell.
  void GridEvent(const GridWindow& grid, const std::function<void()>& action);
  void Sync();
  void PlaceFlagCheckBox();
  void CommitCellEdits();
  bool PreviewKey(MSG& message);
  // Arrows among option buttons choose as they move; Ctrl+Tab and Ctrl+Page Down (with
  // Shift, or Page Up: backwards) bring the next available tab to the front.
  bool OptionArrow(const MSG& message);
  // Up and Down on an up-down click its arrows.
  bool UpDownArrow(const MSG& message);
  bool TabKey(const MSG& message);
  void Hint(HWND control, const wchar_t* words);
  bool IsOurs(HWND window) const;
  RECT PageRect() const;
  // The page's size in the 96-DPI units the layout is written in.
  SIZE PageSize() const;
  int Scale(int pixels96) const { return MulDiv(pixels96, dpi_, 96); }

  FrmExtractionChaine& form_;
  Win32UiServices& ui_;
  HMODULE resources_;
  int dpi_ = 96;
  // Declared first: the classes outlive every window made from them.
  WindowClass dialogClass_;
  WindowClass gridClass_;
  WindowClass tipClass_;
  unique_hfont font_;
  std::vector<std::unique_ptr<GridSource>> sources_;
  std::vector<std::unique_ptr<GridWindow>> grids_;
  std::vector<std::unique_ptr<Binding>> bindings_;
  std::vector<std::unique_ptr<ControlHint>> hints_;
  std::map<HWND, Binding*> byWindow_;
  std::map<const Control*, HWND> windowOf_;
  std::vector<HWND> pages_;
  HWND tabs_ = nullptr;
  HWND flagCheck_ = nullptr;
  GridWindow* extractionGrid_ = nullptr;
  RECT flagCell_{};   // where the check box was last placed, in the grid
  RECT flagShown_{};  // and the part of it that showed
  Control* pendingFocus_ = nullptr;
  std::exception_ptr failure_;
  bool syncing_ = false;
  int messagesShown_ = 0;
  ShownDialog* previousDialog_ = nullptr;
  bool attached_ = false;
  // The controls' hints use it until their windows go.
  TipWindow tip_;
  // Declared last: the window and its children go before the bindings and classes.
  unique_hwnd window_;
};

}  // namespace nv::win
