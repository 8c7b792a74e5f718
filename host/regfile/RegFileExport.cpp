#include <array>
#include <bit>
#include <functional>
#include <set>
#include <string_view>

#include "common/CaseMapping.h"
#include "common/Utf.h"
#include "host/regfile/RegFile.h"
#include "host/regfile/RegFileText.h"
#include "store/RegistryKey.h"
#include "store/RegistryStatusText.h"

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

bool HasLoneSurrogate(TextView text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t u = text[i];
    if (u >= 0xD800 && u < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000) {
      ++i;
    } else if (u >= 0xD800 && u < 0xE000) {
      return true;
    }
  }
  return false;
}

// Why a name cannot be written in the file, or nothing. UTF-8 has no form for a lone surrogate
// (UTF-16 files do).
const char* Unwritable(TextView name, bool utf16) {
  if (name.find_first_of(u"\r\n") != TextView::npos) return "its name holds a line break, which a .reg file cannot carry";
  if (!utf16 && HasLoneSurrogate(name))
    return "its name holds a lone surrogate, which UTF-8 cannot carry (a UTF-16 export to a file can)";
  return nullptr;
}

// What a damaged or hand-made hive might hold that a .reg file cannot, reported instead of written.
struct Export {
  Registry& registry;
  RegKey root;
  bool utf16;
  Text out;  // whole lines not yet written
  std::vector<std::string>& leftOut;
  const std::function<void(std::string_view)>& write;
  bool started = false;

  void LeaveOut(TextView keyText, const std::string& what) { leftOut.push_back(ToUtf8(keyText) + ": " + what); }

  // Called after whole lines only, so that no character is cut between two writes.
  void Flush(bool always = false) {
    constexpr std::size_t kFlushUnits = 1 << 18;
    if (out.empty() || (!always && out.size() < kFlushUnits)) return;
    if (!utf16) {
      write(ToUtf8(out));
    } else {
      if (!started) write("\xFF\xFE");
      if constexpr (std::endian::native == std::endian::little) {
        write(std::string_view(reinterpret_cast<const char*>(out.data()), out.size() * sizeof(char16_t)));
      } else {
        const std::vector<std::uint8_t> bytes = Utf16Bytes(out, false);
        write(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
      }
    }
    started = true;
    out.clear();
  }
};

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
bool IsPlainText(const std::vector<std::uint8_t>& data, bool utf16, Text& text) {
  if (data.size() < 2 || data.size() % 2 != 0) return false;
  text.clear();
  for (std::size_t i = 0; i + 2 < data.size(); i += 2) {
    const auto unit = static_cast<char16_t>(data[i] | data[i + 1] << 8);
    if (unit == u'\0' || unit == u'\r' || unit == u'\n') return false;
    text.push_back(unit);
  }
  return data[data.size() - 2] == 0 && data[data.size() - 1] == 0 && (utf16 || !HasLoneSurrogate(text));
}

void AppendHex(Text& out, std::uint32_t number, int digits) {
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
    out.push_back(u"0123456789abcdef"[(number >> shift) & 0xF]);
}

void AppendHexList(Export& exporting, Text line, const std::vector<std::uint8_t>& data) {
  // Each byte's two digits made once: a value of many MiB is mostly these.
  static constexpr auto kPairs = [] {
    std::array<std::array<char16_t, 2>, 256> pairs{};
    for (std::size_t b = 0; b < 256; ++b) pairs[b] = {u"0123456789abcdef"[b >> 4], u"0123456789abcdef"[b & 15]};
    return pairs;
  }();
  Text& out = exporting.out;
  for (std::size_t i = 0; i < data.size(); ++i) {
    line.append(kPairs[data[i]].data(), 2);
    if (i + 1 == data.size()) break;
    line.push_back(u',');
    if (line.size() + 3 > kHexLineWidth) {
      out.append(line).append(u"\\").append(kLineEnd);
      exporting.Flush();
      line = u"  ";
    }
  }
  out.append(line).append(kLineEnd);
}

void AppendValue(Export& exporting, const Value& value) {
  Text& out = exporting.out;
  const bool utf16 = exporting.utf16;
  Text line = value.name.empty() ? Text(u"@") : Quoted(value.name);
  line.push_back(u'=');
  Text text;
  if (value.type == RegType::Sz && IsPlainText(value.data, utf16, text)) {
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
    AppendHexList(exporting, std::move(line), value.data);
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
    Text previous;
    for (std::uint32_t i = 0; registry.EnumKey(parent.Get(), i, candidate) == RegError::Success; ++i) {
      const Text upper = UpperCase(candidate);
      if (upper == folded) {
        name = candidate;
        break;
      }
      if (i > 0 && !(previous < upper)) break;  // out of order: a damaged hive; keep the caller's spelling
      previous = upper;
    }
    if (!stored.empty()) stored.push_back(u'\\');
    stored.append(name);
    if (!rest.empty() && OpenUniqueKey(registry, parent.Get(), name, RegAccess::Read, parent) != RegError::Success)
      break;
  }
  if (!rest.empty()) return path.subKey;
  return stored;
}

// Sub-keys come in strictly increasing order of their upper-cased names and values have
// distinct names; a repeat can only come from a damaged hive, and ends the listing instead
// of looping over it.
void AppendKey(Export& exporting, const Text& subKey, std::size_t depth, bool top) {
  Registry& registry = exporting.registry;
  const Text keyText = KeyPathText(exporting.root, subKey);
  UniqueRegKey key;
  if (const RegStatus status = OpenUniqueKey(registry, exporting.root, subKey, RegAccess::Read, key);
      status != RegError::Success) {
    if (top) CannotExport(keyText, "the key cannot be opened (" + RegistryStatusText(status) + ")");
    exporting.LeaveOut(keyText, "the key cannot be opened (" + RegistryStatusText(status) + ")");
    return;
  }

  std::vector<Value> values;
  std::set<Text> seen;
  Value value;
  std::uint32_t index = 0;
  RegStatus status;
  while ((status = registry.EnumValue(key.Get(), index++, value.name, value.type, value.data)) == RegError::Success) {
    if (!seen.insert(UpperCase(value.name)).second) {
      exporting.LeaveOut(keyText, "its values repeat (a damaged hive): the values after \"" + ToUtf8(value.name) +
                                      "\" are left out");
      break;
    }
    if (const char* why = Unwritable(value.name, exporting.utf16)) {
      exporting.LeaveOut(keyText, "the value \"" + ToUtf8(value.name) + "\" is left out: " + why);
      continue;
    }
    // regedit writes the default value first.
    values.insert(value.name.empty() ? values.begin() : values.end(), std::move(value));
    value = Value{};
  }
  if (status != RegError::Success && status != RegError::NoMoreItems)
    exporting.LeaveOut(keyText, "its values cannot all be listed (" + RegistryStatusText(status) + ")");
  seen.clear();
  std::vector<Text> children;
  Text child, previous;
  index = 0;
  while ((status = registry.EnumKey(key.Get(), index++, child)) == RegError::Success) {
    Text upper = UpperCase(child);
    if (!children.empty() && !(previous < upper)) {
      exporting.LeaveOut(keyText, "its sub-keys repeat or are out of order (a damaged hive): those after \"" +
                                      ToUtf8(children.back()) + "\" are left out");
      break;
    }
    previous = std::move(upper);
    children.push_back(child);
  }
  if (status != RegError::Success && status != RegError::NoMoreItems)
    exporting.LeaveOut(keyText, "its sub-keys cannot all be listed (" + RegistryStatusText(status) + ")");
  key.Reset();

  Text& out = exporting.out;
  out.append(u"[").append(keyText).append(u"]").append(kLineEnd);
  for (Value& v : values) {
    AppendValue(exporting, v);
    v = Value{};  // written: its data is no longer held
    exporting.Flush();
  }
  out.append(kLineEnd);
  exporting.Flush();
  for (const Text& name : children) {
    const Text childText = KeyPathText(exporting.root, subKey.empty() ? name : subKey + u"\\" + name);
    if (const char* why = Unwritable(name, exporting.utf16)) {
      exporting.LeaveOut(childText, std::string("left out with everything below it: ") + why);
    } else if (depth + 1 > RegLimit::KeyDepth) {
      exporting.LeaveOut(childText, "left out with everything below it: deeper than the " +
                                        std::to_string(RegLimit::KeyDepth) + " levels the registry allows");
    } else {
      AppendKey(exporting, subKey.empty() ? name : subKey + u"\\" + name, depth + 1, false);
    }
  }
}

}  // namespace

void ExportRegKey(Registry& registry, const RegKeyPath& key, bool utf16, std::vector<std::string>& leftOut,
                  const std::function<void(std::string_view bytes)>& write) {
  Export exporting{registry, key.root, utf16, u"Windows Registry Editor Version 5.00", leftOut, write};
  exporting.out.append(kLineEnd).append(kLineEnd);
  const Text subKey = StoredCase(registry, key);
  std::size_t depth = 0;
  for (const char16_t c : subKey) depth += c == u'\\';
  if (const char* why = Unwritable(subKey, utf16)) CannotExport(KeyPathText(key.root, subKey), why);
  AppendKey(exporting, subKey, subKey.empty() ? 0 : depth + 1, true);
  exporting.Flush(true);
}

std::string ExportRegKey(Registry& registry, const RegKeyPath& key, bool utf16, std::vector<std::string>& leftOut) {
  std::string file;
  ExportRegKey(registry, key, utf16, leftOut, [&file](std::string_view bytes) { file.append(bytes); });
  return file;
}

}  // namespace nv
