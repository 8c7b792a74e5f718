#include "platform/win32/standin/ActionDialogs.h"

#include <windows.h>

#include <array>
#include <string>
#include <vector>

namespace nv {
namespace {

namespace ids = ActionDialogIds;

// The action kinds, by type code.
constexpr std::int32_t kOnErr = 0;
constexpr std::int32_t kOnDec = 1;
constexpr std::int32_t kExeIf = 2;
constexpr std::int32_t kGoto = 3;
constexpr std::array<const wchar_t*, 6> kOperators = {L"<", L"<=", L">", L">=", L"=", L"<>"};
constexpr std::uint32_t kEquals = 4;

struct Texts {
  const wchar_t* newTitle;
  const wchar_t* changeTitle;
  const wchar_t* helpTitle;
  std::array<const wchar_t*, 4> kinds;
  const wchar_t* kind;
  const wchar_t* go;
  const wchar_t* loop;
  const wchar_t* check;
  const wchar_t* dest;
  const wchar_t* variable;
  const wchar_t* ope;
  const wchar_t* value;
  const wchar_t* unchanged;
  const wchar_t* changesNote;
  const wchar_t* ok;
  const wchar_t* cancel;
};

constexpr Texts kFrench = {
    L"Nouvelle action", L"Modifier l'action", L"Aide",
    {L"En cas d'erreurs", L"En cas de non déclenchement", L"Exécuter si", L"Aller à"},
    L"&Type :", L"&Continuer le scénario", L"&Relancer automatiquement", L"Tester après l'e&xécution",
    L"&Destination :", L"&Variable :", L"&Opérateur :", L"Va&leur :", L"(inchangé)",
    L"Une zone vide ou une case grisée garde la valeur enregistrée.", L"OK", L"Annuler"};
constexpr Texts kEnglish = {
    L"New action", L"Modify action", L"Help",
    {L"On errors", L"In the event of non release", L"Execute if", L"Go to"},
    L"&Kind:", L"&Continue the scenario", L"&Restart automatically", L"&Test after execution",
    L"&Destination:", L"&Variable:", L"&Operator:", L"Va&lue:", L"(unchanged)",
    L"An empty box or a greyed check keeps the stored value.", L"OK", L"Cancel"};

// A dialog template laid out in memory: the header, then one item after another, each
// on a four-byte boundary, as DialogBoxIndirectParam reads them.
class TemplateBuilder {
 public:
  enum Kind : WORD { kButton = 0x0080, kEdit = 0x0081, kStatic = 0x0082, kCombo = 0x0085 };

  TemplateBuilder(const wchar_t* title, short width, short height) {
    PutDword(DS_SETFONT | DS_MODALFRAME | DS_CENTER | DS_SHELLFONT | WS_POPUP | WS_CAPTION | WS_SYSMENU);
    PutDword(0);
    countAt_ = words_.size();
    words_.push_back(0);
    for (const short value : {short{0}, short{0}, width, height}) words_.push_back(static_cast<WORD>(value));
    words_.push_back(0);  // no menu
    words_.push_back(0);  // the standard dialog class
    PutText(title);
    words_.push_back(8);
    PutText(L"MS Shell Dlg");
  }

  void Add(Kind kind, DWORD style, short x, short y, short width, short height, int id, const wchar_t* text = L"") {
    if (words_.size() % 2) words_.push_back(0);
    PutDword(WS_CHILD | WS_VISIBLE | style);
    PutDword(0);
    for (const short value : {x, y, width, height}) words_.push_back(static_cast<WORD>(value));
    words_.push_back(static_cast<WORD>(id));
    words_.push_back(0xFFFF);
    words_.push_back(kind);
    PutText(text);
    words_.push_back(0);  // no creation data
    ++words_[countAt_];
  }

  const DLGTEMPLATE* Get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

 private:
  void PutDword(DWORD value) {
    words_.push_back(LOWORD(value));
    words_.push_back(HIWORD(value));
  }
  void PutText(const wchar_t* text) {
    for (; *text; ++text) words_.push_back(static_cast<WORD>(*text));
    words_.push_back(0);
  }

  std::vector<WORD> words_;
  std::size_t countAt_ = 0;
};

std::wstring ItemText(HWND dialog, int id) {
  const HWND item = GetDlgItem(dialog, id);
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(item)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(item, text.data(), static_cast<int>(text.size()))));
  return text;
}

Text ToText(const std::wstring& text) { return Text(text.begin(), text.end()); }

// What one action dialog shows and what it gives back.
struct ActionDialog {
  const Texts& texts;
  bool chooseKind;
  std::int32_t kind;
  ActionValues result;

  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    auto* self = reinterpret_cast<ActionDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
    if (self == nullptr) return FALSE;
    switch (message) {
      case WM_INITDIALOG:
        self->Init(dialog);
        return TRUE;
      case WM_COMMAND:
        if (LOWORD(wParam) == ids::kKind && HIWORD(wParam) == CBN_SELCHANGE) {
          self->kind = static_cast<std::int32_t>(SendDlgItemMessageW(dialog, ids::kKind, CB_GETCURSEL, 0, 0));
          self->EnableForKind(dialog);
        } else if (LOWORD(wParam) == IDOK) {
          self->Read(dialog);
          EndDialog(dialog, IDOK);
        } else if (LOWORD(wParam) == IDCANCEL) {
          EndDialog(dialog, IDCANCEL);
        }
        return TRUE;
      default:
        return FALSE;
    }
  }

  void Init(HWND dialog) {
    for (const wchar_t* name : texts.kinds) SendDlgItemMessageW(dialog, ids::kKind, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
    SendDlgItemMessageW(dialog, ids::kKind, CB_SETCURSEL, static_cast<WPARAM>(kind), 0);
    EnableWindow(GetDlgItem(dialog, ids::kKind), chooseKind);
    // Changing an action: the dialog does not know the stored values, so it starts from
    // "unchanged" everywhere and gives back only what the user set.
    if (!chooseKind) {
      SendDlgItemMessageW(dialog, ids::kOperator, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(texts.unchanged));
    }
    for (const wchar_t* ope : kOperators) SendDlgItemMessageW(dialog, ids::kOperator, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ope));
    SendDlgItemMessageW(dialog, ids::kOperator, CB_SETCURSEL, chooseKind ? kEquals : 0, 0);
    for (const int check : {ids::kGo, ids::kLoop, ids::kCheck}) {
      CheckDlgButton(dialog, check, chooseKind ? BST_UNCHECKED : BST_INDETERMINATE);
    }
    EnableForKind(dialog);
  }

  void EnableForKind(HWND dialog) const {
    const bool flagsGo = kind == kOnErr || kind == kOnDec;
    const bool condition = kind == kExeIf || kind == kGoto;
    EnableWindow(GetDlgItem(dialog, ids::kGo), flagsGo);
    EnableWindow(GetDlgItem(dialog, ids::kLoop), kind == kOnErr);
    EnableWindow(GetDlgItem(dialog, ids::kCheck), kind == kGoto);
    EnableWindow(GetDlgItem(dialog, ids::kDest), kind == kGoto);
    EnableWindow(GetDlgItem(dialog, ids::kOperator), kind == kGoto);
    EnableWindow(GetDlgItem(dialog, ids::kVariable), condition);
    EnableWindow(GetDlgItem(dialog, ids::kValue), condition);
  }

  std::optional<std::uint32_t> Flag(HWND dialog, int id) const {
    const UINT state = IsDlgButtonChecked(dialog, id);
    if (state == BST_INDETERMINATE) return std::nullopt;
    return state == BST_CHECKED ? 1u : 0u;
  }

  std::optional<Text> Entry(HWND dialog, int id) const {
    const std::wstring text = ItemText(dialog, id);
    if (text.empty() && !chooseKind) return std::nullopt;
    return ToText(text);
  }

  void Read(HWND dialog) {
    result = ActionValues{};
    result.kind = kind;
    switch (kind) {
      case kOnErr:
        result.go = Flag(dialog, ids::kGo);
        result.loop = Flag(dialog, ids::kLoop);
        break;
      case kOnDec:
        result.go = Flag(dialog, ids::kGo);
        break;
      case kExeIf:
        result.variable = Entry(dialog, ids::kVariable);
        result.value = Entry(dialog, ids::kValue);
        break;
      case kGoto: {
        result.dest = Entry(dialog, ids::kDest);
        result.variable = Entry(dialog, ids::kVariable);
        result.value = Entry(dialog, ids::kValue);
        result.check = Flag(dialog, ids::kCheck);
        const auto chosen = SendDlgItemMessageW(dialog, ids::kOperator, CB_GETCURSEL, 0, 0);
        const LRESULT first = chooseKind ? 0 : 1;  // past "unchanged"
        if (chosen >= first) result.ope = static_cast<std::uint32_t>(chosen - first);
        break;
      }
      default:
        break;
    }
  }
};

INT_PTR ShowActionDialog(ActionDialog& state) {
  const Texts& t = state.texts;
  TemplateBuilder layout(state.chooseKind ? t.newTitle : t.changeTitle, 250, 196);
  using B = TemplateBuilder;
  constexpr DWORD kTab = WS_TABSTOP;
  layout.Add(B::kStatic, SS_LEFT, 8, 10, 64, 8, -1, t.kind);
  layout.Add(B::kCombo, kTab | CBS_DROPDOWNLIST | WS_VSCROLL, 76, 8, 166, 80, ids::kKind);
  layout.Add(B::kButton, kTab | BS_AUTO3STATE, 8, 28, 234, 10, ids::kGo, t.go);
  layout.Add(B::kButton, kTab | BS_AUTO3STATE, 8, 42, 234, 10, ids::kLoop, t.loop);
  layout.Add(B::kButton, kTab | BS_AUTO3STATE, 8, 56, 234, 10, ids::kCheck, t.check);
  layout.Add(B::kStatic, SS_LEFT, 8, 74, 64, 8, -1, t.dest);
  layout.Add(B::kEdit, kTab | WS_BORDER | ES_AUTOHSCROLL, 76, 72, 166, 12, ids::kDest);
  layout.Add(B::kStatic, SS_LEFT, 8, 92, 64, 8, -1, t.variable);
  layout.Add(B::kEdit, kTab | WS_BORDER | ES_AUTOHSCROLL, 76, 90, 166, 12, ids::kVariable);
  layout.Add(B::kStatic, SS_LEFT, 8, 110, 64, 8, -1, t.ope);
  layout.Add(B::kCombo, kTab | CBS_DROPDOWNLIST | WS_VSCROLL, 76, 108, 70, 90, ids::kOperator);
  layout.Add(B::kStatic, SS_LEFT, 8, 128, 64, 8, -1, t.value);
  layout.Add(B::kEdit, kTab | WS_BORDER | ES_AUTOHSCROLL, 76, 126, 166, 12, ids::kValue);
  if (!state.chooseKind) layout.Add(B::kStatic, SS_LEFT, 8, 148, 234, 18, -1, t.changesNote);
  layout.Add(B::kButton, kTab | BS_DEFPUSHBUTTON, 138, 174, 50, 14, IDOK, t.ok);
  layout.Add(B::kButton, kTab | BS_PUSHBUTTON, 192, 174, 50, 14, IDCANCEL, t.cancel);
  return DialogBoxIndirectParamW(GetModuleHandleW(nullptr), layout.Get(), GetActiveWindow(), &ActionDialog::Procedure,
                                 reinterpret_cast<LPARAM>(&state));
}

INT_PTR CALLBACK HelpProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      SetDlgItemTextW(dialog, ids::kHelpText, reinterpret_cast<const wchar_t*>(lParam));
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) EndDialog(dialog, IDOK);
      return TRUE;
    default:
      return FALSE;
  }
}

class DialogActionPrompt final : public ActionPrompt {
 public:
  explicit DialogActionPrompt(const Texts& texts) : texts_(texts) {}

  std::optional<ActionValues> AskNewAction() override {
    ActionDialog state{texts_, true, kOnErr, {}};
    if (ShowActionDialog(state) != IDOK) return std::nullopt;
    return state.result;
  }

  std::optional<ActionValues> AskChanges(std::int32_t kind) override {
    ActionDialog state{texts_, false, kind, {}};
    if (ShowActionDialog(state) != IDOK) return std::nullopt;
    return state.result;
  }

  void ShowHelp(const Text& helpText) override {
    // Line breaks as the edit control shows them.
    std::wstring text;
    for (const char16_t unit : helpText) {
      if (unit == u'\n' && (text.empty() || text.back() != L'\r')) text += L'\r';
      text += static_cast<wchar_t>(unit);
    }
    TemplateBuilder layout(texts_.helpTitle, 260, 150);
    layout.Add(TemplateBuilder::kEdit, WS_TABSTOP | WS_BORDER | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL, 8, 8, 244,
               114, ids::kHelpText);
    layout.Add(TemplateBuilder::kButton, WS_TABSTOP | BS_DEFPUSHBUTTON, 202, 128, 50, 14, IDOK, texts_.ok);
    DialogBoxIndirectParamW(GetModuleHandleW(nullptr), layout.Get(), GetActiveWindow(), &HelpProcedure,
                            reinterpret_cast<LPARAM>(text.c_str()));
  }

 private:
  const Texts& texts_;
};

}  // namespace

std::unique_ptr<ActionPrompt> MakeDialogActionPrompt(std::int32_t languageOffset) {
  return std::make_unique<DialogActionPrompt>(languageOffset == 0 ? kFrench : kEnglish);
}

}  // namespace nv
