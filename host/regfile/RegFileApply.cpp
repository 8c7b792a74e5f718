#include <bit>

#include "common/Utf.h"
#include "host/regfile/RegFile.h"
#include "store/RegistryKey.h"
#include "store/RegistryStatusText.h"

namespace nv {
namespace {

// Applies operations one at a time, keeping open the key the value lines go to.
class Applier {
 public:
  explicit Applier(Registry& registry) : registry_(registry) {}

  void Apply(const RegFileOperation& operation) {
    using Kind = RegFileOperation::Kind;
    if (operation.kind == Kind::DeleteKey) {
      key_.Reset();
      keyPath_.reset();
      const RegStatus status = registry_.DeleteTree(operation.key.root, operation.key.subKey);
      if (status != RegError::Success && status != RegError::FileNotFound) Failed(operation, "delete", status);
      return;
    }
    if (operation.kind == Kind::CreateKey || !keyPath_ || !(*keyPath_ == operation.key)) {
      const RegStatus status =
          CreateUniqueKey(registry_, operation.key.root, operation.key.subKey, RegAccess::ReadWrite, key_);
      if (status != RegError::Success) Failed(operation, "create", status);
      keyPath_ = operation.key;
    }
    if (operation.kind == Kind::SetValue) {
      // A text's units are its UTF-16LE bytes on a little-endian machine, terminator included.
      static_assert(std::endian::native == std::endian::little);
      const auto* bytes = operation.text ? reinterpret_cast<const std::uint8_t*>(operation.text->c_str())
                                         : operation.data.data();
      const std::size_t size = operation.text ? 2 * (operation.text->size() + 1) : operation.data.size();
      const RegStatus status =
          registry_.SetValue(key_.Get(), operation.name, operation.type, bytes, static_cast<std::uint32_t>(size));
      if (status != RegError::Success) Failed(operation, "set a value of", status);
    } else if (operation.kind == Kind::DeleteValue) {
      const RegStatus status = registry_.DeleteValue(key_.Get(), operation.name);
      if (status != RegError::Success && status != RegError::FileNotFound)
        Failed(operation, "delete a value of", status);
    }
  }

 private:
  [[noreturn]] static void Failed(const RegFileOperation& operation, const char* what, RegStatus status) {
    throw RegFileError(operation.line,
                       std::string("cannot ") + what + " " +
                           ToUtf8(KeyPathText(operation.key.root, operation.key.subKey)) +
                           (operation.name.empty() ? std::string() : " \"" + ToUtf8(operation.name) + "\"") + " (" +
                           RegistryStatusText(status) + ")");
  }

  Registry& registry_;
  UniqueRegKey key_;
  std::optional<RegKeyPath> keyPath_;
};

// One batch around `body`, abandoned when it throws.
template <typename Body>
void InOneBatch(Registry& registry, Body body) {
  registry.BeginBatch();
  try {
    body();
  } catch (...) {
    registry.AbandonBatch();
    throw;
  }
  registry.CommitBatch();
}

}  // namespace

void ApplyRegFile(Registry& registry, const std::vector<RegFileOperation>& operations) {
  InOneBatch(registry, [&] {
    Applier applier(registry);
    for (const RegFileOperation& operation : operations) applier.Apply(operation);
  });
}

void ImportRegFile(Registry& registry, const std::function<std::unique_ptr<RegByteSource>()>& openSource) {
  // A file with a fault takes no lock and changes nothing, on any registry.
  ReadRegFile(*openSource(), [](RegFileOperation&) {});
  InOneBatch(registry, [&] {
    Applier applier(registry);
    ReadRegFile(*openSource(), [&](RegFileOperation& operation) { applier.Apply(operation); });
  });
}

}  // namespace nv
