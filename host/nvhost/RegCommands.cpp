#include "common/Utf.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/nvhost/ExitCodes.h"
#include "host/nvhost/ValueInput.h"
#include "host/regfile/RegFile.h"
#include "store/RegistryKey.h"

namespace nv {
namespace {

int Import(Session& session, const std::string& file) {
  const std::vector<RegFileOperation> operations = ParseRegFile(ReadInputBytes(file));
  ApplyRegFile(session.OpenRegistry(), operations);
  return 0;
}

int Export(Session& session, const std::string& keyText, const std::string* file) {
  const auto path = ParseKeyPath(FromUtf8(keyText));
  if (!path) throw UsageError("'" + keyText + "' is not a registry key (HKEY_LOCAL_MACHINE\\...)");
  Registry& registry = session.OpenExistingRegistry();
  UniqueRegKey key;
  if (OpenUniqueKey(registry, path->root, path->subKey, RegAccess::Read, key) != RegError::Success) {
    session.Err() << "nvhost reg: no key " << keyText << "\n";
    return ExitCode::NotFound;
  }
  key.Reset();
  // A file is written as regedit writes one (UTF-16 with a byte-order mark); the
  // terminator gets UTF-8, which the import reads as well.
  const std::string bytes = ExportRegKey(registry, *path, file != nullptr);
  if (file == nullptr) {
    session.Out() << bytes;
    return 0;
  }
  WriteOutputBytes(*file, bytes);
  return 0;
}

}  // namespace

int RunRegCommand(Session& session, const Words& words) {
  constexpr const char* usage = "reg import FILE.reg|- | reg export KEY [FILE]";
  const Arguments arguments = ParseArguments(words, {}, {});
  const auto& p = arguments.positional;
  if (p.empty()) throw UsageError("reg needs import or export");
  if (p[0] == "import") {
    RequirePositional(arguments, 2, usage);
    return Import(session, p[1]);
  }
  if (p[0] == "export") {
    if (p.size() != 2 && p.size() != 3) throw UsageError("usage: " + std::string(usage));
    return Export(session, p[1], p.size() == 3 ? &p[2] : nullptr);
  }
  throw UsageError("reg needs import or export, not '" + p[0] + "'");
}

}  // namespace nv
