#include <fstream>
#include <stdexcept>
#include <string_view>

#include "common/FileKind.h"
#include "common/Utf.h"
#include "host/nvhost/Arguments.h"
#include "host/nvhost/Commands.h"
#include "host/nvhost/ExitCodes.h"
#include "host/nvhost/ValueInput.h"
#include "host/regfile/RegFile.h"
#include "store/RegistryKey.h"

namespace nv {
namespace {

// A registry file read from disk a piece at a time.
class RegFileOnDisk final : public RegByteSource {
 public:
  explicit RegFileOnDisk(const std::string& path) : path_(path), in_(path, std::ios::binary) {
    if (!in_) throw std::runtime_error("cannot open " + path);
  }
  std::size_t Read(char* buffer, std::size_t size) override {
    in_.read(buffer, static_cast<std::streamsize>(size));
    if (in_.bad()) throw std::runtime_error("cannot read " + path_);
    return static_cast<std::size_t>(in_.gcount());
  }

 private:
  std::string path_;
  std::ifstream in_;
};

int Import(Session& session, const std::string& file) {
  if (file == "-") {
    // Standard input cannot be read twice (a check, then the writes): it is held whole.
    const std::string bytes = ReadInputBytes(file);
    ImportRegFile(session.OpenRegistryForWriting(), [&bytes] { return std::make_unique<RegBytesInMemory>(bytes); });
    return 0;
  }
  // A FIFO would block the open and a device would be read without end.
  if (const std::string kind = NonRegularFileKind(file); !kind.empty())
    throw std::runtime_error("cannot import " + file + ": it is " + kind + ", not a regular file");
  auto open = [&file] { return std::make_unique<RegFileOnDisk>(file); };
  open();  // a missing file is said before the hive is opened
  ImportRegFile(session.OpenRegistryForWriting(), open);
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
  // Written as it is made; a file is made only once there is something to write.
  std::vector<std::string> leftOut;
  OutputBytes out = file != nullptr ? OutputBytes(*file) : OutputBytes(session.Out());
  ExportRegKey(registry, *path, file != nullptr, leftOut, [&out](std::string_view bytes) { out.Write(bytes); });
  out.Close();
  if (leftOut.empty()) return 0;
  session.Err() << "nvhost reg: the export left out what a .reg file cannot carry or the hive cannot give:\n";
  for (const std::string& line : leftOut) session.Err() << "  " << line << "\n";
  return ExitCode::IoError;
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
