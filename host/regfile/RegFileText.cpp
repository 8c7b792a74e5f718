#include "host/regfile/RegFileText.h"

#include "common/Utf.h"
#include "host/regfile/RegFile.h"

namespace nv {
namespace {

constexpr TextView kVersion5Header = u"Windows Registry Editor Version 5.00";
constexpr TextView kRegedit4Header = u"REGEDIT4";

TextView TrimEnd(TextView line) {
  while (!line.empty() && (line.back() == u' ' || line.back() == u'\t')) line.remove_suffix(1);
  return line;
}

template <typename Unit>
std::vector<std::basic_string_view<Unit>> SplitLines(std::basic_string_view<Unit> text) {
  std::vector<std::basic_string_view<Unit>> lines;
  for (;;) {
    const std::size_t end = text.find(Unit('\n'));
    auto line = text.substr(0, end);
    if (!line.empty() && line.back() == Unit('\r')) line.remove_suffix(1);
    lines.push_back(line);
    if (end == std::basic_string_view<Unit>::npos) return lines;
    text.remove_prefix(end + 1);
  }
}

RegFileText FromUtf16(std::string_view bytes) {
  if (bytes.size() % 2 != 0) throw RegFileError(1, "the file is UTF-16 but has an odd number of bytes");
  Text units(bytes.size() / 2, u'\0');
  for (std::size_t i = 0; i < units.size(); ++i) {
    units[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * i]) |
                                     static_cast<unsigned char>(bytes[2 * i + 1]) << 8);
  }
  RegFileText file;
  for (const TextView line : SplitLines<char16_t>(units)) file.lines.emplace_back(line);
  return file;
}

RegFileText FromBytes(std::string_view bytes) {
  const auto lines = SplitLines<char>(bytes);
  const bool regedit4 = TrimEnd(FromUtf8(lines.front())) == kRegedit4Header;
  // ANSI files may be either; a version 5 file that is not UTF-16 must be UTF-8.
  const bool utf8 = !regedit4 || IsUtf8(bytes);
  RegFileText file;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (utf8 && !IsUtf8(lines[i])) throw RegFileError(i + 1, "the line is not valid UTF-8");
    file.lines.push_back(utf8 ? FromUtf8(lines[i]) : FromCp1252(lines[i]));
  }
  return file;
}

}  // namespace

RegFileText DecodeRegFile(std::string_view bytes) {
  RegFileText file;
  if (bytes.starts_with("\xFF\xFE")) {
    file = FromUtf16(bytes.substr(2));
  } else if (bytes.starts_with("\xFE\xFF")) {
    throw RegFileError(1, "UTF-16 big-endian files are not supported (regedit writes little-endian)");
  } else {
    file = FromBytes(bytes.starts_with("\xEF\xBB\xBF") ? bytes.substr(3) : bytes);
  }
  const TextView header = TrimEnd(file.lines.front());
  if (header == kVersion5Header) {
    file.format = RegFileFormat::Version5;
  } else if (header == kRegedit4Header && !bytes.starts_with("\xFF\xFE")) {
    file.format = RegFileFormat::Regedit4;
  } else {
    throw RegFileError(1,
                       "not a registry file: the first line must be \"Windows Registry Editor Version 5.00\""
                       " or \"REGEDIT4\" (REGEDIT4 files are ANSI, never UTF-16)");
  }
  return file;
}

std::vector<std::uint8_t> Utf16Bytes(TextView text, bool terminated) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(2 * text.size() + 2);
  for (const char16_t unit : text) {
    bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
    bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
  }
  if (terminated) bytes.insert(bytes.end(), {0, 0});
  return bytes;
}

std::vector<std::uint8_t> AnsiToUtf16Bytes(std::span<const std::uint8_t> ansi) {
  const std::string_view bytes(reinterpret_cast<const char*>(ansi.data()), ansi.size());
  return Utf16Bytes(IsUtf8(bytes) ? FromUtf8(bytes) : FromCp1252(bytes), false);
}

}  // namespace nv
