#include <optional>

#include "common/Utf.h"
#include "host/regfile/RegFile.h"
#include "host/regfile/RegFileText.h"
#include "host/regfile/RegLineCursor.h"
#include "host/regfile/RegNameLimits.h"
#include "host/regfile/RegValueSyntax.h"

namespace nv {
namespace {

// "[KEY]" or "[-KEY]"; the key ends at the line's last "]", as key names may hold one.
RegFileOperation ReadKeyLine(RegLineCursor& cursor) {
  const TextView rest = cursor.Rest();
  std::size_t close = rest.rfind(u']');
  if (close == TextView::npos) cursor.Fail("a key line needs a closing ]");
  for (std::size_t i = close + 1; i < rest.size(); ++i) {
    if (rest[i] != u' ' && rest[i] != u'\t') cursor.Fail("unexpected text after the key's closing ]");
  }
  TextView name = rest.substr(1, close - 1);
  RegFileOperation operation;
  operation.kind = RegFileOperation::Kind::CreateKey;
  if (name.starts_with(u'-')) {
    operation.kind = RegFileOperation::Kind::DeleteKey;
    name.remove_prefix(1);
  }
  const auto path = ParseKeyPath(name);
  if (!path) {
    const std::size_t slash = name.find(u'\\');
    const std::string fault =
        ParseKeyPath(name.substr(0, slash)) ? RegistryNameFault(name.substr(slash + 1)) : std::string();
    cursor.Fail(fault.empty() ? "\"" + ToUtf8(name.substr(0, 80)) +
                                    "\" is not a registry key (HKEY_LOCAL_MACHINE\\... and names of 1 to 255 characters)"
                              : fault);
  }
  // A deletion may name what an older file or hive holds; only what is made must fit.
  if (operation.kind == RegFileOperation::Kind::CreateKey) {
    if (const std::string fault = RegistryNameFault(path->subKey); !fault.empty()) cursor.Fail(fault);
  }
  if (operation.kind == RegFileOperation::Kind::DeleteKey && path->subKey.empty())
    cursor.Fail("a root key cannot be deleted");
  operation.key = *path;
  operation.line = cursor.LineNumber();
  return operation;
}

}  // namespace

RegFileError::RegFileError(std::size_t line, const std::string& reason)
    : std::runtime_error("line " + std::to_string(line) + ": " + reason), line_(line) {}

void ReadRegFile(RegByteSource& source, const std::function<void(RegFileOperation&)>& sink) {
  RegLineReader reader(source);
  std::optional<RegKeyPath> key;  // where value lines go; none before the first key or after a deletion
  Text line;
  RegFileOperation operation;
  while (reader.Next(line)) {
    RegLineCursor cursor(reader, line);
    cursor.SkipBlanks();
    if (cursor.AtEnd() || cursor.Peek() == u';') continue;
    if (cursor.Peek() == u'[') {
      operation = ReadKeyLine(cursor);
      if (operation.kind == RegFileOperation::Kind::CreateKey) {
        key = operation.key;
      } else {
        key.reset();
      }
    } else if (cursor.Peek() == u'"' || cursor.Peek() == u'@') {
      if (!key) cursor.Fail("a value line must follow a [key] line (not a [-key] deletion)");
      operation = RegFileOperation();
      operation.line = cursor.LineNumber();
      RegValueLine value = ReadValueLine(cursor, reader.Format());
      if (const std::string fault = RegistryNameFault({}, value.name); !fault.empty() && !value.deletion)
        throw RegFileError(operation.line, fault);
      operation.kind = value.deletion ? RegFileOperation::Kind::DeleteValue : RegFileOperation::Kind::SetValue;
      operation.key = *key;
      operation.name = std::move(value.name);
      operation.type = value.type;
      operation.data = std::move(value.data);
      operation.text = std::move(value.text);
    } else {
      cursor.Fail("expected a [key] line, a \"name\"= or @= value line, a ; comment or a blank line");
    }
    sink(operation);
  }
}

std::vector<RegFileOperation> ParseRegFile(std::string_view fileBytes) {
  RegBytesInMemory source(fileBytes);
  std::vector<RegFileOperation> operations;
  ReadRegFile(source, [&](RegFileOperation& operation) {
    if (operation.text) {
      operation.data = Utf16Bytes(*operation.text, true);
      operation.text.reset();
    }
    operations.push_back(std::move(operation));
  });
  return operations;
}

}  // namespace nv
