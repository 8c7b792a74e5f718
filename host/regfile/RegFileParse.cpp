#include <optional>

#include "common/Utf.h"
#include "host/regfile/RegFile.h"
#include "host/regfile/RegFileText.h"
#include "host/regfile/RegLineCursor.h"
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
  if (!path)
    cursor.Fail("\"" + ToUtf8(name) +
                "\" is not a registry key (HKEY_LOCAL_MACHINE\\... and names of 1 to 255 characters)");
  if (operation.kind == RegFileOperation::Kind::DeleteKey && path->subKey.empty())
    cursor.Fail("a root key cannot be deleted");
  operation.key = *path;
  operation.line = cursor.LineNumber();
  return operation;
}

}  // namespace

RegFileError::RegFileError(std::size_t line, const std::string& reason)
    : std::runtime_error("line " + std::to_string(line) + ": " + reason), line_(line) {}

std::vector<RegFileOperation> ParseRegFile(std::string_view fileBytes) {
  const RegFileText file = DecodeRegFile(fileBytes);
  std::vector<RegFileOperation> operations;
  std::optional<RegKeyPath> key;  // where value lines go; none before the first key or after a deletion
  for (std::size_t index = 1; index < file.lines.size(); ++index) {
    RegLineCursor cursor(file.lines, index);
    cursor.SkipBlanks();
    if (cursor.AtEnd() || cursor.Peek() == u';') continue;
    if (cursor.Peek() == u'[') {
      operations.push_back(ReadKeyLine(cursor));
      if (operations.back().kind == RegFileOperation::Kind::CreateKey) {
        key = operations.back().key;
      } else {
        key.reset();
      }
    } else if (cursor.Peek() == u'"' || cursor.Peek() == u'@') {
      if (!key) cursor.Fail("a value line must follow a [key] line (not a [-key] deletion)");
      RegFileOperation operation;
      operation.line = cursor.LineNumber();
      RegValueLine value = ReadValueLine(cursor, file.format);
      operation.kind = value.deletion ? RegFileOperation::Kind::DeleteValue : RegFileOperation::Kind::SetValue;
      operation.key = *key;
      operation.name = std::move(value.name);
      operation.type = value.type;
      operation.data = std::move(value.data);
      operations.push_back(std::move(operation));
      index = cursor.Index();
    } else {
      cursor.Fail("expected a [key] line, a \"name\"= or @= value line, a ; comment or a blank line");
    }
  }
  return operations;
}

}  // namespace nv
