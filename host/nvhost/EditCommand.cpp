// edit: the task dialog, run headless with its real objects; the options play the user.
#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "common/Conversions.h"
#include "common/Error.h"
#include "common/Utf.h"
#include "dialog/HeadlessDialogPresenter.h"
#include "dialog/RecordingUiServices.h"
#include "host/ScenarioVariables.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/regfile/RegNameLimits.h"
#include "plugin/ExtractionChaine.h"
#include "host/nvhost/ExitCodes.h"
#include "host/nvhost/TaskLookup.h"
#include "plugin/HostModule.h"
#include "store/ModuleState.h"
#include "store/TaskStore.h"
#include "store/Texts.h"

namespace nv {
namespace {

constexpr const char* kUsage =
    "edit SCENARIO TASK [--new] [--lang fr|en] [--function split|substrings|find] [--string S] "
    "[--separator S | --separator-choice N] [--mask M] [--filter F] [--case-sensitive on|off] [--trim on|off] "
    "[--field @VAR]... (substrings: --field @VAR:START:END[:SHOWSEP]) [--no-fields] [--comment C] [--preview] "
    "[--confirm|--apply|--cancel]";

// What the user does in the dialog, checked before anything is opened.
struct UserPlay {
  std::optional<std::int16_t> function;
  std::optional<Text> chaine;
  std::optional<Text> separator;
  std::optional<std::size_t> separatorChoice;
  std::optional<Text> mask;
  std::optional<Text> filter;
  std::optional<bool> caseSensitive;
  std::optional<bool> trim;
  std::vector<std::string> fields;
  bool fieldsGiven = false;  // --field or --no-fields: the grid is replaced
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

std::optional<bool> OnOffOption(const Arguments& arguments, const std::string& option) {
  const auto value = arguments.Value(option);
  if (!value) return std::nullopt;
  if (*value == "on") return true;
  if (*value == "off") return false;
  throw UsageError(option + " takes on or off, not '" + *value + "'");
}

// The options of one function's editor; the others would be silently lost, so they are refused.
void RefuseForeignOptions(const Arguments& arguments, std::int16_t function) {
  static const std::map<std::string, std::vector<std::int16_t>> owners = {
      {"--separator", {FunctionCode::Split, FunctionCode::Substrings}},
      {"--separator-choice", {FunctionCode::Split, FunctionCode::Substrings}},
      {"--mask", {FunctionCode::FindValues}},
      {"--filter", {FunctionCode::FindValues}},
      {"--case-sensitive", {FunctionCode::FindValues}},
      {"--trim", {FunctionCode::FindValues}}};
  static const char* const names[] = {"split", "substrings", "find"};
  for (const auto& [option, functions] : owners) {
    if (!arguments.Value(option)) continue;
    if (std::find(functions.begin(), functions.end(), function) == functions.end())
      throw UsageError(option + " does not belong to the function " +
                       (function >= 0 && function <= 2 ? names[function] : std::to_string(function)));
  }
}

UserPlay ReadPlay(const Arguments& arguments) {
  UserPlay play;
  if (const auto function = arguments.Value("--function")) {
    static const std::map<std::string, std::int16_t> functions = {
        {"split", FunctionCode::Split}, {"substrings", FunctionCode::Substrings}, {"find", FunctionCode::FindValues}};
    const auto found = functions.find(*function);
    if (found == functions.end())
      throw UsageError("--function takes split, substrings or find, not '" + *function + "'");
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
  play.caseSensitive = OnOffOption(arguments, "--case-sensitive");
  play.trim = OnOffOption(arguments, "--trim");
  play.fields = arguments.Values("--field");
  if (arguments.Has("--no-fields") && !play.fields.empty()) throw UsageError("give --field or --no-fields, not both");
  play.fieldsGiven = arguments.Has("--no-fields") || !play.fields.empty();
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
                        play.filter || play.caseSensitive || play.trim || play.fieldsGiven || play.comment ||
                        play.preview;
  // A preview is a look: without a button it leaves with Cancel.
  if (!play.buttonGiven && play.preview) play.button = "--cancel";
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

void TypeInto(TextBoxVar& box, const std::optional<Text>& text) {
  if (text) box.Type(*text);
}

void Check(CheckBox& box, const std::optional<bool>& wanted) {
  if (wanted && *wanted != (box.Value != 0)) box.Click();
}

// Split and find: the field rows made by the up-down, then each variable typed into its cell
// as a user types it (the grid checks it and trims it).
void TypeRowFields(RowFieldsEditor& editor, const UserPlay& play) {
  if (!play.fieldsGiven) return;
  FlexGrid& grid = editor.NovraFlexGrid1;
  while (grid.Rows() > 1) editor.UpDown1.ClickDown();
  for (const std::string& field : play.fields) {
    editor.UpDown1.ClickUp();
    grid.EnterCell(grid.Rows() - 1, 2);
    grid.EditCell(FromUtf8(field));
  }
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
      TypeRowFields(editor, play);
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
      if (play.fieldsGiven) {
        FlexGrid& grid = editor.NovraFlexGrid1;
        while (grid.Cols() > 1) {
          grid.SetCol(grid.Cols() - 1);
          grid.ClickMinus();
        }
        std::vector<LigneExtraction> lines;
        for (const std::string& field : play.fields) lines.push_back(ParseLine(field));
        editor.SetLignes(lines);
        // The variable typed into its cell, as the user does: checked and trimmed by the grid.
        for (std::size_t i = 0; i < lines.size(); ++i) {
          grid.EnterCell(ExtractionRow::Variable, static_cast<std::int32_t>(i + 1));
          grid.EditCell(lines[i][ExtractionRow::Variable]);
        }
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
      TypeRowFields(editor, play);
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
  explicit DialogsInUse(DialogPresenter& presenter) { HostModule().PlatformDialogs = &presenter; }
  ~DialogsInUse() { HostModule().PlatformDialogs = nullptr; }
  DialogsInUse(const DialogsInUse&) = delete;
  DialogsInUse& operator=(const DialogsInUse&) = delete;
};

// The function the dialog will show: the one asked for, else the stored one, else the
// dialog's first.
std::int16_t ChosenFunction(const Arguments& arguments, const UserPlay& play) {
  if (play.function) return *play.function;
  if (arguments.Has("--new")) return FunctionCode::Split;
  return LoadStoredTask(ModuleRegistry(), arguments.positional[0], arguments.positional[1]).Fonction;
}

}  // namespace

int RunEditCommand(Session& session, const Words& words) {
  const Arguments arguments =
      ParseArguments(words,
                     {"--lang", "--function", "--string", "--separator", "--separator-choice", "--mask", "--filter",
                      "--field", "--comment", "--case-sensitive", "--trim"},
                     {"--new", "--no-fields", "--preview", "--confirm", "--apply", "--cancel"});
  RequirePositional(arguments, 2, kUsage);
  const UserPlay play = ReadPlay(arguments);
  const Text scenario = FromUtf8(arguments.positional[0]);
  RequireRegistryNames(u"SOFTWARE\\NOVRA\\Scenarios\\" + scenario + u"\\Taches\\" + FromUtf8(arguments.positional[1]));
  if (arguments.Has("--new")) {
    session.OpenRegistry();
  } else {
    RequireTask(session.OpenExistingRegistry(), arguments.positional[0], arguments.positional[1]);
  }
  const std::int16_t function = ChosenFunction(arguments, play);
  RefuseForeignOptions(arguments, function);
  for (const std::string& field : play.fields) {
    if (function == FunctionCode::Substrings) ParseLine(field);  // a malformed one is refused before the dialog
    const Text variable = FromUtf8(field.substr(0, field.find(':')));
    if (variable.starts_with(u'@')) RequireRegistryNames(VariablesKeyPath(scenario), TextView(variable).substr(1));
  }
  // On a screen, with no button to press, the person at it plays the user.
  if (!play.buttonGiven && !play.anythingPlayed && session.Platform().ShowsWindows()) {
    const std::unique_ptr<PluginClient> plugin = session.CreatePlugin();
    InitializeForTask(*plugin, arguments);
    if (arguments.Has("--new")) plugin->SetWorkingMode(0);
    const std::int32_t mode = plugin->ShowWrapper();
    return mode == 1 ? ExitCode::Success : ExitCode::NotFound;
  }
  if (play.button == "--cancel") {
    session.OpenRegistry();
  } else {
    session.OpenRegistryForWriting();
  }
  RecordingUiServices ui;
  HeadlessDialogPresenter presenter(ui, [&](FrmExtractionChaine& form) { Play(form, play, session.Out()); });
  const DialogsInUse dialogs(presenter);
  ExtractionChaine plugin;
  InitializeForTask(plugin, arguments);
  if (arguments.Has("--new")) plugin.SetWorkingMode(0);
  plugin.ShowWrapper();
  // Message 603 is the grid's warning: the dialog goes on after it.
  const Text warning = LoadText(TextId::NotAVariableMessage);
  bool stopped = false;
  for (const RecordingUiServices::Message& message : ui.Messages) {
    if (message.Prompt == warning) {
      session.Err() << "warning: " << ToUtf8(message.Prompt) << "\n";
    } else {
      session.Out() << ToUtf8(message.Prompt) << "\n";
      stopped = true;
    }
  }
  return stopped ? ExitCode::DialogMessage : ExitCode::Success;
}

}  // namespace nv
