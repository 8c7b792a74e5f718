// edit: the task dialog, run headless with its real objects; the options play the user.
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "common/Conversions.h"
#include "common/Error.h"
#include "common/Utf.h"
#include "dialog/HeadlessDialogPresenter.h"
#include "dialog/RecordingUiServices.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "plugin/ExtractionChaine.h"
#include "store/ModuleState.h"

namespace nv {
namespace {

constexpr const char* kUsage =
    "edit SCENARIO TASK [--new] [--lang fr|en] [--function split|substrings|find] [--string S] "
    "[--separator S | --separator-choice N] [--mask M] [--filter F] [--case-sensitive] [--trim] "
    "[--field @VAR]... (substrings: --field @VAR:START:END[:SHOWSEP]) [--comment C] [--preview] "
    "[--confirm|--apply|--cancel]";

// What the user does in the dialog, checked before anything is opened.
struct UserPlay {
  std::optional<std::int16_t> function;
  std::optional<Text> chaine;
  std::optional<Text> separator;
  std::optional<std::size_t> separatorChoice;
  std::optional<Text> mask;
  std::optional<Text> filter;
  bool caseSensitive = false;
  bool trim = false;
  std::vector<std::string> fields;
  std::optional<Text> comment;
  bool preview = false;
  std::string button = "--confirm";
  bool buttonGiven = false;
  bool anythingPlayed = false;
};

std::optional<Text> TextOption(const Arguments& arguments, const std::string& option) {
  const auto value = arguments.Value(option);
  return value ? std::optional<Text>(FromUtf8(*value)) : std::nullopt;
}

UserPlay ReadPlay(const Arguments& arguments) {
  UserPlay play;
  if (const auto function = arguments.Value("--function")) {
    static const std::map<std::string, std::int16_t> functions = {
        {"split", FunctionCode::Split}, {"substrings", FunctionCode::Substrings}, {"find", FunctionCode::FindValues}};
    const auto found = functions.find(*function);
    if (found == functions.end()) throw UsageError("--function takes split, substrings or find, not '" + *function + "'");
    play.function = found->second;
  }
  play.chaine = TextOption(arguments, "--string");
  play.separator = TextOption(arguments, "--separator");
  if (const auto choice = arguments.Value("--separator-choice")) {
    if (play.separator) throw UsageError("give --separator or --separator-choice, not both");
    if (choice->size() != 1 || (*choice)[0] < '0' || (*choice)[0] > '8') {
      throw UsageError("--separator-choice takes 0 to 8");
    }
    play.separatorChoice = static_cast<std::size_t>((*choice)[0] - '0');
  }
  play.mask = TextOption(arguments, "--mask");
  play.filter = TextOption(arguments, "--filter");
  play.caseSensitive = arguments.Has("--case-sensitive");
  play.trim = arguments.Has("--trim");
  play.fields = arguments.Values("--field");
  play.comment = TextOption(arguments, "--comment");
  play.preview = arguments.Has("--preview");
  int buttons = 0;
  for (const char* button : {"--confirm", "--apply", "--cancel"}) {
    if (arguments.Has(button)) {
      play.button = button;
      ++buttons;
    }
  }
  if (buttons > 1) throw UsageError("press one of --confirm, --apply and --cancel");
  play.buttonGiven = buttons == 1;
  play.anythingPlayed = play.function || play.chaine || play.separator || play.separatorChoice || play.mask ||
                        play.filter || play.caseSensitive || play.trim || !play.fields.empty() || play.comment ||
                        play.preview;
  return play;
}

// "@VAR:START:END[:SHOWSEP]"; the show-separator flag as the grid's check box writes it.
LigneExtraction ParseLine(const std::string& field) {
  std::vector<std::string> parts(1);
  for (const char c : field) {
    if (c == ':') {
      parts.emplace_back();
    } else {
      parts.back().push_back(c);
    }
  }
  if (parts.size() != 3 && parts.size() != 4) {
    throw UsageError("a substrings field is @VAR:START:END[:SHOWSEP], not '" + field + "'");
  }
  bool showSep = false;
  if (parts.size() == 4) {
    try {
      showSep = ToBoolean(FromUtf8(parts[3]));
    } catch (const RuntimeError&) {
      throw UsageError("SHOWSEP is True, False, 1 or 0 in '" + field + "'");
    }
  }
  return {FromUtf8(parts[0]), FromUtf8(parts[1]), FromUtf8(parts[2]), BooleanText(showSep)};
}

std::vector<Text> ParseVariables(const std::vector<std::string>& fields) {
  std::vector<Text> variables;
  for (const std::string& field : fields) variables.push_back(FromUtf8(field));
  return variables;
}

void TypeInto(TextBoxVar& box, const std::optional<Text>& text) {
  if (text) box.Type(*text);
}

void Check(CheckBox& box, bool wanted) {
  if (wanted && box.Value == 0) box.Click();
}

void PlaySeparator(SeparatorGroup& group, const UserPlay& play) {
  if (play.separator) group.SetSeparateur(*play.separator);
  if (play.separatorChoice) group.Separator.Choose(*play.separatorChoice);
}

void PrintRows(std::ostream& out, const FlexGrid& grid) {
  for (std::int32_t row = 1; row < grid.Rows(); ++row) {
    out << ToUtf8(grid.TextMatrix(row, 0)) << "\t" << ToUtf8(grid.TextMatrix(row, 1)) << "\t"
        << ToUtf8(grid.TextMatrix(row, 2)) << "\n";
  }
}

void PrintColumns(std::ostream& out, const FlexGrid& grid) {
  for (std::int32_t col = 1; col < grid.Cols(); ++col) {
    out << col << "\t" << ToUtf8(grid.TextMatrix(ExtractionRow::Value, col)) << "\t"
        << ToUtf8(grid.TextMatrix(ExtractionRow::Variable, col)) << "\n";
  }
}

// The user's part, in a user's order: function, entries, fields, comment, Preview, a button.
void Play(FrmExtractionChaine& form, const UserPlay& play, std::ostream& out) {
  if (play.function) form.CBFonction.SetListIndex(*play.function);
  switch (form.CBFonction.ListIndex()) {
    case FunctionCode::Split: {
      FrameSplit& editor = form.FrameSplit1;
      TypeInto(editor.txtChaine, play.chaine);
      PlaySeparator(editor, play);
      if (!play.fields.empty()) editor.SetColonnes(ParseVariables(play.fields));
      if (play.preview) {
        editor.btnPreview.Click();
        PrintRows(out, editor.NovraFlexGrid1);
      }
      break;
    }
    case FunctionCode::Substrings: {
      FrameExtraction& editor = form.FrameExtraction1;
      TypeInto(editor.txtChaine, play.chaine);
      PlaySeparator(editor, play);
      if (!play.fields.empty()) {
        FlexGrid& grid = editor.NovraFlexGrid1;
        while (grid.Cols() > 1) {
          grid.SetCol(grid.Cols() - 1);
          grid.ClickMinus();
        }
        std::vector<LigneExtraction> lines;
        for (const std::string& field : play.fields) lines.push_back(ParseLine(field));
        editor.SetLignes(lines);
      }
      if (play.preview) {
        editor.btnPreview.Click();
        PrintColumns(out, editor.NovraFlexGrid1);
      }
      break;
    }
    case FunctionCode::FindValues: {
      FrameRecherche& editor = form.FrameRecherche1;
      TypeInto(editor.txtChaine, play.chaine);
      TypeInto(editor.txtMasque, play.mask);
      TypeInto(editor.txtFiltre, play.filter);
      Check(editor.chkCaseSensitive, play.caseSensitive);
      Check(editor.chkTrim, play.trim);
      if (!play.fields.empty()) editor.SetColonnes(ParseVariables(play.fields));
      if (play.preview) {
        editor.btnPreview.Click();
        PrintRows(out, editor.NovraFlexGrid1);
      }
      break;
    }
    default:
      break;
  }
  if (play.comment) form.txtComm.Content = *play.comment;
  if (play.button == "--confirm") form.cmdValider.Click();
  if (play.button == "--apply") form.cmdApp.Click();
  if (play.button == "--cancel") form.cmdAnnuler.Click();
}

// The module shows dialogs through `presenter` for as long as this lives.
class DialogsInUse {
 public:
  explicit DialogsInUse(DialogPresenter& presenter) { Module().PlatformDialogs = &presenter; }
  ~DialogsInUse() { Module().PlatformDialogs = nullptr; }
  DialogsInUse(const DialogsInUse&) = delete;
  DialogsInUse& operator=(const DialogsInUse&) = delete;
};

}  // namespace

int RunEditCommand(Session& session, const Words& words) {
  if (PrintedHelp(session, words, kUsage)) return 0;
  const Arguments arguments =
      ParseArguments(words,
                     {"--lang", "--function", "--string", "--separator", "--separator-choice", "--mask", "--filter",
                      "--field", "--comment"},
                     {"--new", "--case-sensitive", "--trim", "--preview", "--confirm", "--apply", "--cancel"});
  RequirePositional(arguments, 2, kUsage);
  const UserPlay play = ReadPlay(arguments);
  for (const std::string& field : play.fields) {
    if (play.function == FunctionCode::Substrings) ParseLine(field);
  }
  // On a screen, with no button to press, the person at it plays the user.
  if (!play.buttonGiven && session.Platform().ShowsWindows()) {
    if (play.anythingPlayed) throw UsageError("options that play the user need --confirm, --apply or --cancel");
    const std::unique_ptr<PluginClient> plugin = session.CreatePlugin();
    InitializeForTask(*plugin, arguments);
    if (arguments.Has("--new")) plugin->SetWorkingMode(0);
    const std::int32_t mode = plugin->ShowWrapper();
    return mode == 1 ? 0 : 1;
  }
  session.OpenRegistry();
  RecordingUiServices ui;
  HeadlessDialogPresenter presenter(ui, [&](FrmExtractionChaine& form) { Play(form, play, session.Out()); });
  const DialogsInUse dialogs(presenter);
  ExtractionChaine plugin;
  InitializeForTask(plugin, arguments);
  if (arguments.Has("--new")) plugin.SetWorkingMode(0);
  plugin.ShowWrapper();
  for (const RecordingUiServices::Message& message : ui.Messages) session.Out() << ToUtf8(message.Prompt) << "\n";
  return ui.Messages.empty() ? 0 : 2;
}

}  // namespace nv
