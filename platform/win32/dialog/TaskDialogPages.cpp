// The controls of each tab page, where they stand, and what binds them. Places are in
// pixels at 96 DPI inside the page; the window scales them to the screen.
#include "platform/win32/dialog/TaskDialogWindow.h"

#include <commctrl.h>

#include "platform/win32/dialog/HintWords.h"
#include "platform/win32/dialog/TaskDialogIds.h"
#include "store/ModuleState.h"

namespace nv::win {
namespace {

constexpr DWORD kLabel = SS_LEFT | SS_NOPREFIX;
// A value shown in a sunken box, on one line, with an ellipsis where it is cut.
constexpr DWORD kValue = SS_LEFT | SS_NOPREFIX | SS_CENTERIMAGE | SS_LEFTNOWORDWRAP | SS_ENDELLIPSIS;
constexpr DWORD kEntry = WS_TABSTOP | ES_AUTOHSCROLL;
constexpr DWORD kPush = WS_TABSTOP | BS_PUSHBUTTON;

// The columns of the entry rows.
constexpr int kLeft = 10;
constexpr int kEntryLeft = 94;
constexpr int kEntryWidth = 290;
constexpr int kEqualsLeft = 390;
constexpr int kValueLabelLeft = 422;
constexpr int kResultLeft = 470;
constexpr int kRowHeight = 21;
constexpr int kLabelDrop = 3;  // a label's top below its entry's, to share the text line
constexpr int kButtonWidth = 96;
constexpr int kButtonHeight = 25;

// Right-aligned buttons on one line, the last at the right margin.
void PlaceButtonsFrom(int right, int count, int* lefts) {
  for (int i = 0; i < count; ++i) lefts[i] = right - (count - i) * kButtonWidth - (count - 1 - i) * 6;
}

}  // namespace

void TaskDialogWindow::BuildChaineRow(HWND page, int base, EditorBase& editor) {
  const int width = PageSize().cx;
  constexpr int top = 12;
  Bind<LabelBinding>(editor.lblChaine, Make(page, L"STATIC", kLabel, 0, base + ids::kLblChaine, {kLeft, top + kLabelDrop, 80, 14}));
  Bind<TextBoxVarBinding>(editor.txtChaine,
                          Make(page, L"EDIT", kEntry, WS_EX_CLIENTEDGE, base + ids::kTxtChaine, {kEntryLeft, top, kEntryWidth, kRowHeight}));
  Bind<ButtonBinding>(editor.btnCalculeValeurChaine,
                      Make(page, L"BUTTON", kPush, 0, base + ids::kBtnCalculeValeurChaine, {kEqualsLeft, top, 24, kRowHeight}));
  Bind<LabelBinding>(editor.lblValeurChaine,
                     Make(page, L"STATIC", kLabel, 0, base + ids::kLblValeurChaine, {kValueLabelLeft, top + kLabelDrop, 46, 14}));
  Bind<LabelBinding>(editor.lblResultatChaine, Make(page, L"STATIC", kValue, WS_EX_STATICEDGE, base + ids::kLblResultatChaine,
                                                    {kResultLeft, top, width - kLeft - kResultLeft, kRowHeight}));
}

void TaskDialogWindow::BuildSeparatorRows(HWND page, int base, SeparatorGroup& group) {
  const int width = PageSize().cx;
  constexpr int top = 40;
  Bind<LabelBinding>(group.lblSeparator,
                     Make(page, L"STATIC", kLabel, 0, base + ids::kLblSeparator, {kLeft, top + kLabelDrop, 80, 14}));
  Bind<TextBoxVarBinding>(group.txtSeparator, Make(page, L"EDIT", kEntry, WS_EX_CLIENTEDGE, base + ids::kTxtSeparator,
                                                   {kEntryLeft, top, kEntryWidth, kRowHeight}));
  Bind<ButtonBinding>(group.btnCalculeValeurSeparator,
                      Make(page, L"BUTTON", kPush, 0, base + ids::kBtnCalculeValeurSeparator, {kEqualsLeft, top, 24, kRowHeight}));
  Bind<LabelBinding>(group.lblResultSeparator, Make(page, L"STATIC", kValue, WS_EX_STATICEDGE, base + ids::kLblResultSeparator,
                                                    {kResultLeft, top, width - kLeft - kResultLeft, kRowHeight}));
  // Nine choices on two lines under the entry; the first starts the group.
  for (std::size_t i = 0; i < group.Separator.Count; ++i) {
    const int column = static_cast<int>(i % 5);
    const int line = static_cast<int>(i / 5);
    const DWORD style = BS_RADIOBUTTON | (i == 0 ? WS_GROUP | WS_TABSTOP : 0);
    Bind<OptionBinding>(group.Separator, i,
                        Make(page, L"BUTTON", style, 0, base + ids::kSeparator0 + static_cast<int>(i),
                             {kEntryLeft + column * 102, 68 + line * 20, 98, 17}));
  }
}

void TaskDialogWindow::BuildCountRow(HWND page, int base, RowFieldsEditor& editor, int top) {
  Bind<LabelBinding>(editor.lblTableau,
                     Make(page, L"STATIC", kLabel, 0, base + ids::kLblTableau, {kLeft, top + kLabelDrop + 2, 140, 14}));
  Bind<TextBoxBinding>(editor.txtFieldsCount,
                       Make(page, L"EDIT", WS_TABSTOP | ES_READONLY | ES_RIGHT, WS_EX_CLIENTEDGE, base + ids::kTxtFieldsCount,
                            {kLeft + 146, top + 2, 40, kRowHeight}),
                       false);
  // No buddy: the arrows only click, by mouse or by the Up and Down keys.
  const HWND upDown =
      Make(page, UPDOWN_CLASSW, WS_TABSTOP | UDS_ARROWKEYS, 0, base + ids::kUpDown1, {kLeft + 186, top + 2, 17, kRowHeight});
  SendMessageW(upDown, UDM_SETRANGE32, static_cast<WPARAM>(-1000), 1000);
  SendMessageW(upDown, UDM_SETPOS32, 0, 0);
  Bind<UpDownBinding>(editor.UpDown1, upDown);
  Hint(upDown, HintWordsFor(Module().LanguageOffset).fieldCount);
}

GridWindow& TaskDialogWindow::BuildGrid(HWND page, int id, Control& model, std::unique_ptr<GridSource> source, RECT bounds) {
  auto grid = std::make_unique<GridWindow>(
      *source, [this](const GridWindow& from, const std::function<void()>& action) { GridEvent(from, action); });
  const RECT scaled{Scale(bounds.left), Scale(bounds.top), Scale(bounds.left + bounds.right), Scale(bounds.top + bounds.bottom)};
  grid->SetTip(tip_);
  grid->Create(page, id, scaled, font_.get());
  GridWindow& made = *grid;
  sources_.push_back(std::move(source));
  grids_.push_back(std::move(grid));
  Bind<GridBinding>(model, made);
  return made;
}

void TaskDialogWindow::BuildParameters(HWND page) {
  const int width = PageSize().cx;
  Bind<LabelBinding>(form_.Label5, Make(page, L"STATIC", kLabel, 0, ids::kLabel5, {16, 22, 140, 14}));
  Bind<TextBoxBinding>(form_.txtTache,
                       Make(page, L"EDIT", ES_AUTOHSCROLL | ES_READONLY, WS_EX_CLIENTEDGE, ids::kTxtTache, {160, 19, 300, kRowHeight}), false);
  Bind<FrameBinding>(form_.Frame1, Make(page, L"BUTTON", BS_GROUPBOX, 0, ids::kFrame1, {10, 56, 460, 60}));
  Bind<LabelBinding>(form_.Label1, Make(page, L"STATIC", kLabel, 0, ids::kLabel1, {26, 82, 80, 14}));
  Bind<ComboBinding>(form_.CBFonction,
                     Make(page, WC_COMBOBOXW, WS_TABSTOP | CBS_DROPDOWNLIST | WS_VSCROLL, 0, ids::kCbFonction, {110, 78, 340, 160}));
  Bind<PictureBinding>(form_.Picture1, Make(page, L"STATIC", SS_ICON | SS_CENTERIMAGE, 0, ids::kPicture1, {width - 16 - 40, 16, 40, 40}),
                       resources_);
}

// Clear and Preview at the right of the row at `rowTop`, and the editor's grid below them
// down to the page's foot.
GridWindow& TaskDialogWindow::BuildButtonsAndGrid(HWND page, int base, EditorBase& editor, int rowTop) {
  const auto [width, height] = PageSize();
  int lefts[2];
  PlaceButtonsFrom(width - kLeft, 2, lefts);
  Bind<ButtonBinding>(editor.btnClear, Make(page, L"BUTTON", kPush, 0, base + ids::kBtnClear, {lefts[0], rowTop, kButtonWidth, kButtonHeight}));
  Bind<ButtonBinding>(editor.btnPreview,
                      Make(page, L"BUTTON", kPush, 0, base + ids::kBtnPreview, {lefts[1], rowTop, kButtonWidth, kButtonHeight}));
  const int gridTop = rowTop + kButtonHeight + 10;
  return BuildGrid(page, base + ids::kGrid, editor.NovraFlexGrid1, std::make_unique<FlexGridSource>(editor.NovraFlexGrid1),
                   {kLeft, gridTop, width - 2 * kLeft, height - gridTop - kLeft});
}

void TaskDialogWindow::BuildSplit(HWND page) {
  FrameSplit& editor = form_.FrameSplit1;
  const int base = ids::kSplit;
  BuildChaineRow(page, base, editor);
  BuildSeparatorRows(page, base, editor);
  constexpr int rowTop = 112;
  BuildCountRow(page, base, editor, rowTop);
  BuildButtonsAndGrid(page, base, editor, rowTop);
}

void TaskDialogWindow::BuildExtraction(HWND page) {
  FrameExtraction& editor = form_.FrameExtraction1;
  const int base = ids::kExtraction;
  BuildChaineRow(page, base, editor);
  BuildSeparatorRows(page, base, editor);
  constexpr int rowTop = 112;
  extractionGrid_ = &BuildButtonsAndGrid(page, base, editor, rowTop);
  // Inside the grid, so that the grid's edges clip it and it scrolls with the cells.
  flagCheck_ = Make(extractionGrid_->Handle(), L"BUTTON", BS_CHECKBOX, 0, base + ids::kMCheckBox, {0, 0, 13, 13});
  SetWindowPos(flagCheck_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  Bind<CheckBinding>(editor.mCheckBox, flagCheck_);
  Hint(flagCheck_, nullptr);
  extractionGrid_->OnViewChanged([this] { PlaceFlagCheckBox(); });
  const HintWords& words = HintWordsFor(Module().LanguageOffset);
  Hint(GetDlgItem(extractionGrid_->Handle(), GridWindow::kPlusId), words.addField);
  Hint(GetDlgItem(extractionGrid_->Handle(), GridWindow::kMinusId), words.removeField);
}

void TaskDialogWindow::BuildRecherche(HWND page) {
  FrameRecherche& editor = form_.FrameRecherche1;
  const int base = ids::kRecherche;
  const int width = PageSize().cx;
  BuildChaineRow(page, base, editor);
  constexpr int maskTop = 40;
  Bind<LabelBinding>(editor.lblMasque, Make(page, L"STATIC", kLabel, 0, base + ids::kLblMasque, {kLeft, maskTop + kLabelDrop, 80, 14}));
  Bind<TextBoxVarBinding>(editor.txtMasque, Make(page, L"EDIT", kEntry, WS_EX_CLIENTEDGE, base + ids::kTxtMasque,
                                                 {kEntryLeft, maskTop, kEntryWidth, kRowHeight}));
  Bind<ButtonBinding>(editor.btnCalculeValeurMasque,
                      Make(page, L"BUTTON", kPush, 0, base + ids::kBtnCalculeValeurMasque, {kEqualsLeft, maskTop, 24, kRowHeight}));
  Bind<LabelBinding>(editor.lblValeurMasque,
                     Make(page, L"STATIC", kLabel, 0, base + ids::kLblValeurMasque, {kValueLabelLeft, maskTop + kLabelDrop, 46, 14}));
  Bind<LabelBinding>(editor.lblResultatMasque, Make(page, L"STATIC", kValue, WS_EX_STATICEDGE, base + ids::kLblResultatMasque,
                                                    {kResultLeft, maskTop, width - kLeft - kResultLeft, kRowHeight}));
  constexpr int filterTop = 68;
  Bind<LabelBinding>(editor.lblFiltre, Make(page, L"STATIC", kLabel, 0, base + ids::kLblFiltre, {kLeft, filterTop + kLabelDrop, 80, 14}));
  Bind<TextBoxVarBinding>(editor.txtFiltre, Make(page, L"EDIT", kEntry, WS_EX_CLIENTEDGE, base + ids::kTxtFiltre,
                                                 {kEntryLeft, filterTop, kEntryWidth, kRowHeight}));
  constexpr int optionsTop = 96;
  Bind<FrameBinding>(editor.Frame1,
                     Make(page, L"BUTTON", BS_GROUPBOX, 0, base + ids::kFrameOptions, {kLeft, optionsTop, width - 2 * kLeft, 44}));
  Bind<CheckBinding>(editor.chkCaseSensitive, Make(page, L"BUTTON", WS_TABSTOP | WS_GROUP | BS_3STATE, 0, base + ids::kChkCaseSensitive,
                                                   {kLeft + 12, optionsTop + 18, 220, 17}));
  Bind<CheckBinding>(editor.chkTrim, Make(page, L"BUTTON", WS_TABSTOP | BS_3STATE, 0, base + ids::kChkTrim,
                                          {kLeft + 250, optionsTop + 18, width - 2 * kLeft - 262, 17}));
  constexpr int rowTop = 150;
  BuildCountRow(page, base, editor, rowTop);
  BuildButtonsAndGrid(page, base, editor, rowTop);
}

void TaskDialogWindow::BuildComment(HWND page) {
  const auto [width, height] = PageSize();
  Bind<TextBoxBinding>(form_.txtComm,
                       Make(page, L"EDIT", WS_TABSTOP | ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL, WS_EX_CLIENTEDGE, ids::kTxtComm,
                            {kLeft, kLeft, width - 2 * kLeft, height - 2 * kLeft}),
                       true);
}

void TaskDialogWindow::BuildActions(HWND page) {
  ActionsTab& actions = form_.Actions;
  const auto [width, height] = PageSize();
  const int buttonsTop = height - kLeft - kButtonHeight;
  BuildGrid(page, ids::kGrdAc, actions.grdAc, std::make_unique<StandardGridSource>(actions.grdAc),
            {kLeft, kLeft, width - 2 * kLeft, buttonsTop - 2 * kLeft});
  int lefts[3];
  PlaceButtonsFrom(width - kLeft, 3, lefts);
  Button* const buttons[] = {&actions.cmdAcA, &actions.cmdAcM, &actions.cmdAcS};
  const int buttonIds[] = {ids::kCmdAcA, ids::kCmdAcM, ids::kCmdAcS};
  for (int i = 0; i < 3; ++i) {
    Bind<ButtonBinding>(*buttons[i], Make(page, L"BUTTON", kPush, 0, buttonIds[i], {lefts[i], buttonsTop, kButtonWidth, kButtonHeight}));
  }
}

}  // namespace nv::win
