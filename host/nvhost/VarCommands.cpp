// var: scenario variables read, written, listed and removed, values byte for byte.
#include <fstream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
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

// The value's UTF-8 straight to its output as it is read.
class ValueOutput final : public Utf8Output {
 public:
  explicit ValueOutput(OutputBytes& out) : out_(out) {}
  void Write(std::string_view bytes) override { out_.Write(bytes); }

 private:
  OutputBytes& out_;
};

int NoVariable(Session& session, const std::vector<std::string>& p) {
  session.Err() << "nvhost var: scenario " << p[1] << " has no variable " << p[2] << "\n";
  return ExitCode::NotFound;
}

int Get(Session& session, const Arguments& arguments) {
  RequirePositional(arguments, 3, kUsage);
  RefuseOptions(arguments, {"--file"}, "get");
  const auto& p = arguments.positional;
  ScenarioVariables variables(session.OpenExistingRegistry());
  const auto output = arguments.Value("--output");
  if (!arguments.Has("--json")) {
    // A log of many MiB goes out as it is read, never held whole in memory.
    OutputBytes out = output ? OutputBytes(*output) : OutputBytes(session.Out());
    ValueOutput utf8(out);
    const RegStatus status = variables.WriteAsUtf8(FromUtf8(p[1]), FromUtf8(p[2]), utf8);
    if (status != RegError::Success && !out.Started()) return NoVariable(session, p);
    if (status != RegError::Success) {
      throw std::runtime_error("variable " + p[2] + " of scenario " + p[1] +
                               " could not be read to its end: " + RegistryStatusText(status));
    }
    if (output) {
      out.Close();
    } else {
      session.Out() << "\n";
    }
    return ExitCode::Success;
  }
  const auto value = variables.Get(FromUtf8(p[1]), FromUtf8(p[2]));
  if (!value) return NoVariable(session, p);
  const Text text = ToText(*value);
  session.Out() << JsonObject({JsonMember("scenario", JsonString(p[1])), JsonMember("name", JsonString(p[2])),
                               JsonMember("value", JsonString(text))})
                << "\n";
  if (output) WriteOutputBytes(*output, ToUtf8(text));
  return ExitCode::Success;
}

int Set(Session& session, const Arguments& arguments) {
  RefuseOptions(arguments, {"--output", "--json"}, "set");
  const auto& p = arguments.positional;
  const auto file = arguments.Value("--file");
  if (p.size() != (file ? 3u : 4u)) throw UsageError("usage: var set SCENARIO NAME VALUE|--file PATH|-");
  RequireRegistryNames(VariablesKeyPath(FromUtf8(p[1])), FromUtf8(p[2]));
  Text value;
  if (file) {
    value = ReadUtf8Input(*file);
  } else if (p[3] == "-") {
    value = ReadUtf8Input("-");
  } else {
    value = FromUtf8(p[3]);
  }
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
  std::vector<std::string> entries;
  for (const Text& name : names) {
    const auto value = variables.Get(scenario, name);
    entries.push_back(JsonObject({JsonMember("name", JsonString(name)),
                                  JsonMember("value", JsonString(value ? ToText(*value) : Text()))}));
  }
  session.Out() << JsonObject({JsonMember("scenario", JsonString(arguments.positional[1])),
                               JsonMember("variables", JsonArray(entries))})
                << "\n";
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
