// var: scenario variables read, written, listed and removed, values byte for byte.
#include <algorithm>
#include <cstdint>
#include <fstream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/Conversions.h"
#include "common/Utf.h"
#include "host/ScenarioVariables.h"
#include "host/StoredValue.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/nvhost/ExitCodes.h"
#include "host/nvhost/JsonWriter.h"
#include "host/nvhost/ValueInput.h"
#include "store/RegistryKey.h"
#include "store/RegistryStatusText.h"
#include "host/regfile/RegNameLimits.h"

namespace nv {
namespace {

constexpr const char* kUsage =
    "var get SCENARIO NAME [--output PATH] [--json] | var set SCENARIO NAME VALUE|--file PATH|- | "
    "var list SCENARIO [--json] | var unset SCENARIO NAME";

void RefuseOptions(const Arguments& arguments, std::initializer_list<const char*> options, const std::string& verb) {
  for (const char* option : options) {
    if (arguments.Value(option) || arguments.Has(option))
      throw UsageError(std::string(option) + " does not belong to var " + verb);
  }
}

// The value's UTF-8 straight to its output as it is read, after `opening` (what goes before
// the value once it is found).
class ValueOutput final : public Utf8Output {
 public:
  explicit ValueOutput(OutputBytes& out, std::string opening = {}) : out_(out), opening_(std::move(opening)) {}
  void Write(std::string_view bytes) override {
    if (!found_) out_.Write(opening_);
    found_ = true;
    out_.Write(bytes);
  }
  bool Found() const { return found_; }

 private:
  OutputBytes& out_;
  std::string opening_;
  bool found_ = false;
};

// Writes the variable to `out` as it is read; false, with nothing written, when the scenario
// has no such variable. Any other failure is raised: one after writing began leaves a part.
bool WriteFoundVariable(const ScenarioVariables& variables, const std::string& scenario, const std::string& name,
                        ValueOutput& out, Utf8Encoder encode = &AppendUtf8) {
  const RegStatus status = variables.WriteAsUtf8(FromUtf8(scenario), FromUtf8(name), out, encode);
  if (status == RegError::Success) return true;
  if (status == RegError::FileNotFound && !out.Found()) return false;
  throw std::runtime_error("variable " + name + " of scenario " + scenario +
                           (out.Found() ? " could not be read to its end: " : " could not be read: ") +
                           RegistryStatusText(status));
}

// {"name":N,"value":V} with the value written as it is read (see WriteFoundVariable).
bool WriteJsonVariable(const ScenarioVariables& variables, const std::string& scenario, const std::string& name,
                       std::string opening, OutputBytes& out) {
  ValueOutput value(out, std::move(opening) + "\"value\":\"");
  if (!WriteFoundVariable(variables, scenario, name, value, &AppendJsonStringBody)) return false;
  out.Write("\"}");
  return true;
}

int NoVariable(Session& session, const std::vector<std::string>& p) {
  session.Err() << "nvhost var: scenario " << p[1] << " has no variable " << p[2] << "\n";
  return ExitCode::NotFound;
}

int Get(Session& session, const Arguments& arguments) {
  RequirePositional(arguments, 3, kUsage);
  RefuseOptions(arguments, {"--file"}, "get");
  const auto& p = arguments.positional;
  Registry& registry = session.OpenExistingRegistry();
  const ReadingScope reading(registry);  // the JSON and --output give the same value
  ScenarioVariables variables(registry);
  const auto output = arguments.Value("--output");
  const bool json = arguments.Has("--json");
  // Each read as it is written, never whole: the JSON first, then the value alone, to --output
  // or, without --json, to standard output.
  if (json) {
    OutputBytes out(session.Out());
    const std::string opening =
        "{" + JsonMember("scenario", JsonString(p[1])) + "," + JsonMember("name", JsonString(p[2])) + ",";
    if (!WriteJsonVariable(variables, p[1], p[2], opening, out)) return NoVariable(session, p);
    out.Write("\n");
  }
  if (!output && json) return ExitCode::Success;
  OutputBytes out = output ? OutputBytes(*output) : OutputBytes(session.Out());
  ValueOutput utf8(out);
  if (!WriteFoundVariable(variables, p[1], p[2], utf8)) return NoVariable(session, p);
  if (output) {
    out.Close();
  } else {
    session.Out() << "\n";
  }
  return ExitCode::Success;
}

// A file is read twice: checked and counted, then stored as it is read again, so that a log
// of many MiB is never whole in memory. The second reading takes only the bytes the first
// counted (a log written to meanwhile is stored as it was), and a file changed otherwise in
// between is refused with nothing stored.
void StoreFile(Session& session, const Text& scenario, const Text& name, const std::string& path,
               std::size_t maxUnits) {
  const Utf8Extent extent = ReadUtf8Blocks(path, [](std::string_view) {}, maxUnits);
  const auto changed = [&] { return std::runtime_error(path + " changed while it was read: nothing was stored"); };
  ScenarioVariables variables(session.OpenRegistryForWriting());
  variables.SetMade(scenario, name, extent.units, [&](const TextPieceSink& sink) {
    Text piece;
    std::size_t given = 0;
    const auto widen = [&](std::string_view utf8) {
      piece.clear();
      AppendFromUtf8(utf8, piece);
      given += piece.size();
      if (given > extent.units) throw changed();
      sink(piece);
    };
    if (ReadUtf8Blocks(path, widen, maxUnits, extent.bytes).bytes != extent.bytes || given != extent.units)
      throw changed();
  });
}

int Set(Session& session, const Arguments& arguments) {
  RefuseOptions(arguments, {"--output", "--json"}, "set");
  const auto& p = arguments.positional;
  const auto file = arguments.Value("--file");
  if (p.size() != (file ? 3u : 4u)) throw UsageError("usage: var set SCENARIO NAME VALUE|--file PATH|-");
  RequireRegistryNames(VariablesKeyPath(FromUtf8(p[1])), FromUtf8(p[2]));
  // The text and its terminator, as UTF-16, within what the registry stores.
  const std::uint64_t largest = std::max<std::uint64_t>(session.Platform().LargestValueBytes(), 2);
  const auto maxUnits = static_cast<std::size_t>(std::min<std::uint64_t>((largest - 2) / 2, SIZE_MAX / 2));
  const std::string& source = file ? *file : p[3];
  if (file && source != "-") {
    StoreFile(session, FromUtf8(p[1]), FromUtf8(p[2]), source, maxUnits);
    return ExitCode::Success;
  }
  // Standard input cannot be read twice: it is read whole, then stored.
  const Text value = source == "-" ? ReadUtf8Input("-", maxUnits) : FromUtf8(source);
  ScenarioVariables(session.OpenRegistryForWriting()).Set(FromUtf8(p[1]), FromUtf8(p[2]), value);
  return ExitCode::Success;
}

int List(Session& session, const Arguments& arguments) {
  RequirePositional(arguments, 2, kUsage);
  RefuseOptions(arguments, {"--file", "--output"}, "list");
  Registry& registry = session.OpenExistingRegistry();
  const ReadingScope reading(registry);
  ScenarioVariables variables(registry);
  const Text scenario = FromUtf8(arguments.positional[1]);
  const std::vector<Text> names = variables.Names(scenario);
  if (!arguments.Has("--json")) {
    for (const Text& name : names) session.Out() << ToUtf8(name) << "\n";
    return ExitCode::Success;
  }
  // Each value written as it is read: a log of many MiB among them is never held whole.
  OutputBytes out(session.Out());
  out.Write("{" + JsonMember("scenario", JsonString(arguments.positional[1])) + ",\"variables\":[");
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string opening = std::string(i == 0 ? "" : ",") + "{" + JsonMember("name", JsonString(names[i])) + ",";
    // One unset since it was listed reads as empty.
    if (!WriteJsonVariable(variables, arguments.positional[1], ToUtf8(names[i]), opening, out))
      out.Write(opening + "\"value\":\"\"}");
  }
  out.Write("]}\n");
  return ExitCode::Success;
}

int Unset(Session& session, const Arguments& arguments) {
  RequirePositional(arguments, 3, kUsage);
  RefuseOptions(arguments, {"--file", "--output", "--json"}, "unset");
  const auto& p = arguments.positional;
  session.OpenExistingRegistry();
  Registry& registry = session.OpenRegistryForWriting();
  UniqueRegKey key;
  RegStatus status =
      OpenUniqueKey(registry, RegRoot::LocalMachine, VariablesKeyPath(FromUtf8(p[1])), RegAccess::ReadWrite, key);
  if (status == RegError::Success) status = registry.DeleteValue(key.Get(), FromUtf8(p[2]));
  if (status == RegError::FileNotFound) {
    session.Err() << "nvhost var: scenario " << p[1] << " has no variable " << p[2] << "\n";
    return ExitCode::NotFound;
  }
  if (status != RegError::Success)
    throw std::runtime_error("cannot remove the variable " + p[2] + " (registry error " + std::to_string(status) + ")");
  return ExitCode::Success;
}

}  // namespace

int RunVarCommand(Session& session, const Words& words) {
  const Arguments arguments = ParseArguments(words, {"--file", "--output"}, {"--json"});
  const auto& p = arguments.positional;
  if (p.empty()) throw UsageError("var needs get, set, list or unset");
  if (p[0] == "get") return Get(session, arguments);
  if (p[0] == "set") return Set(session, arguments);
  if (p[0] == "list") return List(session, arguments);
  if (p[0] == "unset") return Unset(session, arguments);
  throw UsageError("var needs get, set, list or unset, not '" + p[0] + "'");
}

}  // namespace nv
