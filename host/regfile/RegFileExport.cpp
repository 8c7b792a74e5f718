#include "common/CaseMapping.h"
#include "common/Utf.h"
#include "host/regfile/RegFile.h"
#include "host/regfile/RegFileText.h"
#include "store/RegistryKey.h"

namespace nv {
namespace {

// regedit's hex lines: at most 77 columns before the ",\" that continues them.
constexpr std::size_t kHexLineWidth = 77;
constexpr TextView kLineEnd = u"\r\n";

struct Value {
  Text name;
  std::uint32_t type = 0;
  std::vector<std::uint8_t> data;
};

[[noreturn]] void CannotExport(TextView keyText, const std::string& why) {
  throw std::runtime_error("cannot export " + ToUtf8(keyText) + ": " + why);
}

void CheckWritable(TextView keyText, TextView name) {
  if (name.find_first_of(u"\r\n") != TextView::npos)
    CannotExport(keyText, "the name \"" + ToUtf8(name) + "\" holds a line break, which a .reg file cannot carry");
}

Text Quoted(TextView text) {
  Text quoted = u"\"";
  for (const char16_t c : text) {
    if (c == u'\\' || c == u'"') quoted.push_back(u'\\');
    quoted.push_back(c);
  }
  quoted.push_back(u'"');
  return quoted;
}

// A REG_SZ whose bytes a quoted string gives back exactly: whole units, one terminating zero
// and no other zero or line break.
bool IsPlainText(const std::vector<std::uint8_t>& data, Text& text) {
  if (data.size() < 2 || data.size() % 2 != 0) return false;
  text.clear();
  for (std::size_t i = 0; i + 2 < data.size(); i += 2) {
    const auto unit = static_cast<char16_t>(data[i] | data[i + 1] << 8);
    if (unit == u'\0' || unit == u'\r' || unit == u'\n') return false;
    text.push_back(unit);
  }
  return data[data.size() - 2] == 0 && data[data.size() - 1] == 0;
}

void AppendHex(Text& out, std::uint32_t number, int digits) {
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
    out.push_back(u"0123456789abcdef"[(number >> shift) & 0xF]);
}

void AppendHexList(Text& out, Text line, const std::vector<std::uint8_t>& data) {
  for (std::size_t i = 0; i < data.size(); ++i) {
    AppendHex(line, data[i], 2);
    if (i + 1 == data.size()) break;
    line.push_back(u',');
    if (line.size() + 3 > kHexLineWidth) {
      out.append(line).append(u"\\").append(kLineEnd);
      line = u"  ";
    }
  }
  out.append(line).append(kLineEnd);
}

void AppendValue(Text& out, const Value& value) {
  Text line = value.name.empty() ? Text(u"@") : Quoted(value.name);
  line.push_back(u'=');
  Text text;
  if (value.type == RegType::Sz && IsPlainText(value.data, text)) {
    out.append(line).append(Quoted(text)).append(kLineEnd);
  } else if (value.type == RegType::Dword && value.data.size() == 4) {
    line.append(u"dword:");
    AppendHex(line,
              static_cast<std::uint32_t>(value.data[0] | value.data[1] << 8 | value.data[2] << 16 |
                                         static_cast<std::uint32_t>(value.data[3]) << 24),
              8);
    out.append(line).append(kLineEnd);
  } else {
    if (value.type == RegType::Binary) {
      line.append(u"hex:");
    } else {
      line.append(u"hex(");
      int digits = 1;
      while (digits < 8 && (value.type >> (4 * digits)) != 0) ++digits;
      AppendHex(line, value.type, digits);
      line.append(u"):");
    }
    AppendHexList(out, std::move(line), value.data);
  }
}

// The sub-key path with each name as stored, found by enumeration; the caller's spelling
// where a parent cannot be listed.
Text StoredCase(Registry& registry, const RegKeyPath& path) {
  Text stored;
  UniqueRegKey parent(registry, path.root);
  TextView rest = path.subKey;
  while (!rest.empty()) {
    const std::size_t end = rest.find(u'\\');
    const TextView wanted = rest.substr(0, end);
    rest.remove_prefix(end == TextView::npos ? rest.size() : end + 1);
    Text name(wanted);
    const Text folded = UpperCase(wanted);
    Text candidate;
    for (std::uint32_t i = 0; registry.EnumKey(parent.Get(), i, candidate) == RegError::Success; ++i) {
      if (UpperCase(candidate) == folded) {
        name = candidate;
        break;
      }
    }
    if (!stored.empty()) stored.push_back(u'\\');
    stored.append(name);
    if (!rest.empty() && OpenUniqueKey(registry, parent.Get(), name, RegAccess::Read, parent) != RegError::Success)
      break;
  }
  if (!rest.empty()) return path.subKey;
  return stored;
}

void AppendKey(Registry& registry, RegKey root, const Text& subKey, Text& out) {
  const Text keyText = KeyPathText(root, subKey);
  CheckWritable(keyText, subKey);
  UniqueRegKey key;
  if (const RegStatus status = OpenUniqueKey(registry, root, subKey, RegAccess::Read, key); status != RegError::Success)
    CannotExport(keyText, "the key cannot be opened (error " + std::to_string(status) + ")");

  std::vector<Value> values;
  Value value;
  std::uint32_t index = 0;
  RegStatus status;
  while ((status = registry.EnumValue(key.Get(), index++, value.name, value.type, value.data)) == RegError::Success) {
    CheckWritable(keyText, value.name);
    // regedit writes the default value first.
    values.insert(value.name.empty() ? values.begin() : values.end(), value);
  }
  if (status != RegError::NoMoreItems)
    CannotExport(keyText, "its values cannot be listed (error " + std::to_string(status) + ")");
  std::vector<Text> children;
  Text child;
  index = 0;
  while ((status = registry.EnumKey(key.Get(), index++, child)) == RegError::Success) children.push_back(child);
  if (status != RegError::NoMoreItems)
    CannotExport(keyText, "its sub-keys cannot be listed (error " + std::to_string(status) + ")");
  key.Reset();

  out.append(u"[").append(keyText).append(u"]").append(kLineEnd);
  for (const Value& v : values) AppendValue(out, v);
  out.append(kLineEnd);
  for (const Text& name : children) AppendKey(registry, root, subKey.empty() ? name : subKey + u"\\" + name, out);
}

}  // namespace

std::string ExportRegKey(Registry& registry, const RegKeyPath& key, bool utf16) {
  Text out = u"Windows Registry Editor Version 5.00";
  out.append(kLineEnd).append(kLineEnd);
  AppendKey(registry, key.root, StoredCase(registry, key), out);
  if (!utf16) return ToUtf8(out);
  const std::vector<std::uint8_t> bytes = Utf16Bytes(out, false);
  std::string file = "\xFF\xFE";
  file.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return file;
}

}  // namespace nv
