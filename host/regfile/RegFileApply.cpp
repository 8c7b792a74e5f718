#include "common/Utf.h"
#include "host/regfile/RegFile.h"
#include "store/RegistryKey.h"

namespace nv {
namespace {

[[noreturn]] void Failed(const RegFileOperation& operation, const char* what, RegStatus status) {
  throw RegFileError(operation.line,
                     std::string("cannot ") + what + " " +
                         ToUtf8(KeyPathText(operation.key.root, operation.key.subKey)) +
                         (operation.name.empty() ? std::string() : " \"" + ToUtf8(operation.name) + "\"") + " (error " +
                         std::to_string(status) + ")");
}

void ApplyAll(Registry& registry, const std::vector<RegFileOperation>& operations) {
  using Kind = RegFileOperation::Kind;
  UniqueRegKey key;  // the key of the value lines that follow, opened once
  const RegKeyPath* keyPath = nullptr;
  for (const RegFileOperation& operation : operations) {
    if (operation.kind == Kind::DeleteKey) {
      key.Reset();
      keyPath = nullptr;
      const RegStatus status = registry.DeleteTree(operation.key.root, operation.key.subKey);
      if (status != RegError::Success && status != RegError::FileNotFound) Failed(operation, "delete", status);
      continue;
    }
    if (operation.kind == Kind::CreateKey || keyPath == nullptr || !(*keyPath == operation.key)) {
      const RegStatus status =
          CreateUniqueKey(registry, operation.key.root, operation.key.subKey, RegAccess::ReadWrite, key);
      if (status != RegError::Success) Failed(operation, "create", status);
      keyPath = &operation.key;
    }
    if (operation.kind == Kind::SetValue) {
      const RegStatus status = registry.SetValue(key.Get(), operation.name, operation.type, operation.data.data(),
                                                 static_cast<std::uint32_t>(operation.data.size()));
      if (status != RegError::Success) Failed(operation, "set a value of", status);
    } else if (operation.kind == Kind::DeleteValue) {
      const RegStatus status = registry.DeleteValue(key.Get(), operation.name);
      if (status != RegError::Success && status != RegError::FileNotFound)
        Failed(operation, "delete a value of", status);
    }
  }
}

}  // namespace

void ApplyRegFile(Registry& registry, const std::vector<RegFileOperation>& operations) {
  registry.BeginBatch();
  try {
    ApplyAll(registry, operations);
  } catch (...) {
    registry.AbandonBatch();
    throw;
  }
  registry.CommitBatch();
}

}  // namespace nv
