#include <fstream>
#include <iterator>

#include "common/Utf.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/regfile/RegFile.h"
#include "store/RegistryKey.h"

namespace nv {
namespace {

std::string ReadWholeFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot open " + path);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad()) throw std::runtime_error("cannot read " + path);
  return bytes;
}

int Import(Session& session, const std::string& file) {
  const std::vector<RegFileOperation> operations = ParseRegFile(ReadWholeFile(file));
  ApplyRegFile(session.OpenRegistry(), operations);
  return 0;
}

int Export(Session& session, const std::string& keyText, const std::string* file) {
  const auto path = ParseKeyPath(FromUtf8(keyText));
  if (!path) throw UsageError("'" + keyText + "' is not a registry key (HKEY_LOCAL_MACHINE\\...)");
  Registry& registry = session.OpenRegistry();
  UniqueRegKey key;
  if (OpenUniqueKey(registry, path->root, path->subKey, RegAccess::Read, key) != RegError::Success) {
    session.Err() << "nvhost reg: no key " << keyText << "\n";
    return 1;
  }
  key.Reset();
  // A file is written as regedit writes one (UTF-16 with a byte-order mark); the
  // terminator gets UTF-8, which the import reads as well.
  const std::string bytes = ExportRegKey(registry, *path, file != nullptr);
  if (file == nullptr) {
    session.Out() << bytes;
    return 0;
  }
  std::ofstream out(*file, std::ios::binary | std::ios::trunc);
  out << bytes;
  out.close();
  if (!out) throw std::runtime_error("cannot write " + *file);
  return 0;
}

}  // namespace

int RunRegCommand(Session& session, const Words& words) {
  constexpr const char* usage = "reg import FILE.reg | reg export KEY [FILE]";
  if (PrintedHelp(session, words, usage)) return 0;
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
