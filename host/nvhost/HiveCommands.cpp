// nvhost hive check FILE and nvhost hive recover FILE OUT: the hive file itself, natively.
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/nvhost/HelpTexts.h"
#include "platform/posix/HiveRecovery.h"

namespace nv {
namespace {

constexpr const char* kUsage = "hive check [FILE] | hive recover FILE OUT";
constexpr int kProblemsShown = 100;

int RunHiveCommand(Session& session, const Words& words) {
  const Arguments arguments = ParseArguments(words, {}, {});
  const auto& p = arguments.positional;
  if (p.empty()) throw UsageError("hive needs check or recover");
  if (p[0] == "check") {
    if (p.size() > 2) throw UsageError(std::string("usage: ") + kUsage);
    const std::string file = p.size() == 2 ? p[1] : session.HivePath();
    const std::vector<std::string> problems = CheckHiveFile(file, kProblemsShown);
    if (problems.empty()) {
      session.Out() << "hive " << file << ": sound\n";
      return 0;
    }
    session.Out() << "hive " << file << ": damaged\n";
    for (const std::string& problem : problems) session.Out() << "  " << problem << "\n";
    return 1;
  }
  if (p[0] == "recover") {
    RequirePositional(arguments, 3, kUsage);
    const RecoveryReport report = RecoverHive(p[1], p[2]);
    session.Out() << "recovered " << report.keys << " keys and " << report.values << " values into " << p[2] << "\n";
    if (report.lost.empty()) return 0;
    session.Err() << "nvhost hive: could not recover:\n";
    for (const std::string& line : report.lost) session.Err() << "  " << line << "\n";
    return 1;
  }
  throw UsageError("hive needs check or recover, not '" + p[0] + "'");
}

}  // namespace

const std::vector<Command>& HiveFileCommands() {
  static const std::vector<Command> commands = {
      {"hive", kUsage,
       "check a hive in full (the --hive one by default), or copy what can still be read out of a damaged one into a "
       "new hive",
       help::kHive, RunHiveCommand},
  };
  return commands;
}

}  // namespace nv
