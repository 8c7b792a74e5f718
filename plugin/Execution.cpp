// ExecuteTache, RunT and Run: the task executed from end to end. Only here are errors
// caught: they become status 3 and an error line, and Complete is raised all the same.
#include <algorithm>
#include <optional>
#include <vector>

#include "common/Conversions.h"
#include "common/Error.h"
#include "engine/ExtractPieces.h"
#include "engine/FindValues.h"
#include "engine/PieceCut.h"
#include "engine/Split.h"
#include "plugin/ErrorLine.h"
#include "plugin/ExtractionChaine.h"
#include "plugin/HostModule.h"
#include "plugin/VariableAccess.h"
#include "store/ModuleState.h"
#include "store/RegistryOperations.h"
#include "store/TaskStore.h"
#include "store/Texts.h"
#include "store/Timestamp.h"

namespace nv {
namespace {

ReportWriter& ModuleReportWriter() {
  std::shared_ptr<ReportWriter>& writer = HostModule().ReportWriterInstance;
  if (!writer) writer = ModuleServices().CreateReportWriter();
  return *writer;
}

void ResolveInPlace(const Text& scenario, Text& text, PieceScanner* scanner = nullptr) {
  if (!IsVariableReference(text)) return;
  const Text name = text.substr(1);
  text = ToText(scanner != nullptr ? ResolveVariable(scenario, name, *scanner) : ResolveVariable(scenario, name));  // moved
}

// Result k goes to field k + 1; a result with no field is an index error, after the
// earlier results were stored.
template <typename Results>
void StoreResults(VariablesService& variables, const Text& scenario, const std::vector<TaskField>& fields,
                  const Results& results) {
  for (std::size_t i = 0; i < results.size(); ++i) {
    if (i >= fields.size()) RaiseError(ErrorNumber::SubscriptOutOfRange);
    const Text& target = fields[i].Var;
    if (!target.empty()) variables.SetVariableValue(scenario, target.substr(1), results[i]);
  }
}

// The fields of a positional task in order, each with its start and end: a field without
// a number keeps those of the field before, as the extraction resolved them.
template <typename Take>
void ForEachField(const std::vector<TaskField>& fields, Take take) {
  std::int16_t start = 0;
  std::int16_t end = 0;
  for (const TaskField& field : fields) {
    if (const auto number = IntegerIfNumeric(field.Start)) start = *number;
    if (const auto number = IntegerIfNumeric(field.End)) end = *number;
    take(field, start, end);
  }
}

void ExtractFields(VariablesService& variables, const Text& scenario, const std::vector<TaskField>& fields,
                   const PieceCut& cut) {
  ForEachField(fields, [&](const TaskField& field, std::int16_t& start, std::int16_t& end) {
    const bool showSeparators = ToBoolean(field.ShowSep);
    if (!field.Var.empty()) {
      variables.SetVariableValue(scenario, field.Var.substr(1), ExtractPieces(cut, start, end, showSeparators));
    }
  });
}

// The stretches of the text that the fields will take, up to the first field that fails:
// it fails again when it is extracted, after the fields before it are stored.
std::vector<UnitSpan> FieldStretches(const PieceCut& cut, const std::vector<TaskField>& fields) {
  std::vector<UnitSpan> stretches;
  try {
    ForEachField(fields, [&](const TaskField& field, std::int16_t& start, std::int16_t& end) {
      if (!field.Var.empty()) stretches.push_back(ExtractedSpan(cut, start, end));
    });
  } catch (const RuntimeError&) {
  }
  return stretches;
}

// What the fields take of a text when each names pieces counted from one end only: from the
// start (a start of 0 or more, an end above 0, as carried from field to field), or from the
// end (a start below 0 and an end of 0 or less, the field's own numbers). The separators
// they need found from either end; the text between is never taken. Nothing when a field
// takes from both ends, carries a number resolved from the end, or fails.
struct PiecesNeeded {
  std::size_t fromStart = 0;
  std::size_t fromEnd = 0;
};

std::optional<PiecesNeeded> PiecesTheFieldsNeed(const std::vector<TaskField>& fields) {
  PiecesNeeded needed;
  bool fits = true;
  bool startKnown = true, endKnown = true;  // as a whole read would resolve them
  try {
    ForEachField(fields, [&](const TaskField& field, std::int16_t& start, std::int16_t& end) {
      startKnown = startKnown || IsNumeric(field.Start);
      endKnown = endKnown || IsNumeric(field.End);
      if (field.Var.empty() || !fits) return;
      if (!startKnown || !endKnown) {
        fits = false;
      } else if (start >= 0 && end > 0) {
        // Piece end - 1 is taken whole, so its separator must have been found.
        needed.fromStart = std::max(needed.fromStart, static_cast<std::size_t>(end));
        --end;  // as the extraction resolves it: the index of the last piece
      } else if (start < 0 && end <= 0) {
        needed.fromEnd = std::max(needed.fromEnd, static_cast<std::size_t>(-start));
        startKnown = endKnown = false;  // resolved from a count that is not known
      } else {
        fits = false;
      }
    });
  } catch (const RuntimeError&) {
    return std::nullopt;
  }
  if (!fits || (needed.fromStart == 0 && needed.fromEnd == 0)) return std::nullopt;
  return needed;
}

// The text of a positional task over a variable, its separator given as it is: the variable
// is cut as it is read, and only what the fields take is kept, so that a log of many MiB
// costs neither the memory nor the copy of its lines in between.
struct PositionalText {
  std::optional<PartlyReadText> partly;
  std::optional<PieceCut> cut;
};

void ReadFieldStretches(const Text& scenario, const TaskDefinition& definition, PositionalText& text) {
  PieceScanner scanner(definition.Separateur, kPositionalReach);
  if (const std::optional<PiecesNeeded> needed = PiecesTheFieldsNeed(definition.Fields))
    scanner.NeedOnly(needed->fromStart, needed->fromEnd);
  const StretchSelector select = [&](TextView whole, PieceScanner& scanned) {
    text.cut.emplace(whole, std::move(scanned));
    return FieldStretches(*text.cut, definition.Fields);
  };
  text.partly = ResolveVariablePartly(scenario, definition.Chaine.substr(1), scanner, select);
  if (!text.partly) text.cut.reset();
}

}  // namespace

void ExtractionChaine::ExecuteTache() {
  ModuleServices().YieldToHost();
  std::unique_ptr<VariablesService> variables;
  try {
    ReportWriter& report = ModuleReportWriter();
    report.SetScenarioName(Scen);
    report.SetReportFilePath(Rapport);
    UseOwnRegistryContext();
    WriteTaskStatus(Nom, TaskStatus::Running);
    LoadTaskDefinition(Nom, Definition);
    report.AddReportLine(LoadText(TextId::RunStartLine) + Nom, Bouton, ReportLevel::Start);
    // A separator given as it is lets the fields' pieces be found while the text is read,
    // each stretch while it is still in the processor's cache.
    std::optional<PieceScanner> scanner;
    PositionalText positional;
    if (Definition.Fonction == FunctionCode::Substrings && !IsVariableReference(Definition.Separateur)) {
      if (IsVariableReference(Definition.Chaine)) ReadFieldStretches(Scen, Definition, positional);
      if (!positional.partly) scanner.emplace(Definition.Separateur, kPositionalReach);
    }
    if (!positional.partly) ResolveInPlace(Scen, Definition.Chaine, scanner ? &*scanner : nullptr);
    for (Text* text : {&Definition.Separateur, &Definition.Masque, &Definition.Filtre}) ResolveInPlace(Scen, *text);
    variables = ModuleServices().CreateVariablesService();
    variables->SetScenarioName(Scen);
    // The engine hands out views of the texts; each piece is copied once, where it is stored.
    switch (Definition.Fonction) {
      case FunctionCode::Split: {
        SplitPieces pieces;
        SplitBySeparator(Definition.Chaine, Definition.Separateur, pieces);
        StoreResults(*variables, Scen, Definition.Fields, pieces);
        break;
      }
      case FunctionCode::Substrings:
        if (positional.cut) {
          ExtractFields(*variables, Scen, Definition.Fields, *positional.cut);
        } else {
          // One cut of the text serves every field.
          const PieceCut cut = scanner ? PieceCut(Definition.Chaine, std::move(*scanner))
                                       : PieceCut(Definition.Chaine, Definition.Separateur, kPositionalReach);
          ExtractFields(*variables, Scen, Definition.Fields, cut);
        }
        break;
      case FunctionCode::FindValues: {
        std::int16_t start = 0;
        std::int16_t end = 0;
        std::vector<TextView> results;
        FindValues(Definition.Chaine, Definition.Masque, Definition.Filtre, start, end, Definition.CaseSensitive == 1,
                   Definition.Trim == 1, results);
        StoreResults(*variables, Scen, Definition.Fields, results);
        break;
      }
      default:
        break;
    }
    WriteTaskStatus(Nom, TaskStatus::Ended);
    WriteRegistryValue(Nom, u"ExecuteLe", ValueKind::Text, CurrentTimestamp());
  } catch (...) {
    const ErrorView error = CurrentError();
    WriteTaskStatus(Nom, TaskStatus::Failed);
    ModuleReportWriter().AddReportLine(ErrorLine(error), Bouton, ReportLevel::Error);
  }
  RaiseComplete();
}

void ExtractionChaine::RunT(std::int16_t) { ExecuteTache(); }

void ExtractionChaine::Run(std::int16_t data) {
  if (data != 0) {
    ExecuteTache();
  } else {
    RaiseComplete();
  }
}

void ExtractionChaine::RaiseComplete() {
  if (OnComplete) OnComplete();
}

}  // namespace nv
