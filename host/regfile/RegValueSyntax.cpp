#include "host/regfile/RegValueSyntax.h"

#include <array>

#include "common/Utf.h"

namespace nv {
namespace {

constexpr int HexDigit(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return -1;
}

// Up to `maxDigits` hex digits, at least one.
bool ReadHexNumber(RegLineCursor& cursor, int maxDigits, std::uint32_t& value) {
  value = 0;
  int digits = 0;
  while (!cursor.AtEnd() && HexDigit(cursor.Peek()) >= 0) {
    if (++digits > maxDigits) return false;
    value = value << 4 | static_cast<std::uint32_t>(HexDigit(cursor.Next()));
  }
  return digits > 0;
}

std::string Shown(TextView text) { return "\"" + ToUtf8(text.substr(0, 24)) + (text.size() > 24 ? "...\"" : "\""); }

// The bytes of the run of "xx," at the start of `rest`, as regedit writes them: the form of
// nearly every byte of a long value, read without the general rules below. Gives the units
// read; whatever else comes (one digit, blanks, the last byte, a fault) is left to those.
std::size_t ReadByteRun(TextView rest, std::vector<std::uint8_t>& bytes) {
  static constexpr auto kDigits = [] {
    std::array<std::int8_t, 128> digits{};
    digits.fill(-1);
    for (int c = 0; c < 128; ++c) digits[static_cast<std::size_t>(c)] = static_cast<std::int8_t>(HexDigit(static_cast<char16_t>(c)));
    return digits;
  }();
  const auto digit = [](char16_t c) { return c < 128 ? kDigits[c] : -1; };
  std::size_t at = 0;
  for (; at + 3 <= rest.size() && rest[at + 2] == u','; at += 3) {
    const int high = digit(rest[at]);
    const int low = digit(rest[at + 1]);
    if ((high | low) < 0) break;
    bytes.push_back(static_cast<std::uint8_t>(high << 4 | low));
  }
  return at;
}

std::vector<std::uint8_t> ReadHexList(RegLineCursor& cursor) {
  std::vector<std::uint8_t> bytes;
  bool comma = true;
  for (;;) {
    cursor.SkipBlanks();
    if (comma) cursor.Skip(ReadByteRun(cursor.Rest(), bytes));  // still after a comma if it read any
    if (cursor.AtContinuation()) {
      if (!cursor.NextLine()) cursor.Fail("the last line ends with \\ but nothing follows");
      continue;
    }
    if (cursor.AtEnd() || cursor.Peek() == u';') return bytes;
    if (!comma) cursor.Fail("expected a comma between hex bytes before " + Shown(cursor.Rest()));
    // A byte is everything up to the next separator, and all of it must be read.
    const TextView rest = cursor.Rest();
    const TextView token = rest.substr(0, rest.find_first_of(u", \t\\;"));
    std::uint32_t byte = 0;
    if (!ReadHexNumber(cursor, 2, byte) || cursor.Rest().size() + token.size() != rest.size())
      cursor.Fail(Shown(token.empty() ? rest : token) + " is not a hex byte");
    bytes.push_back(static_cast<std::uint8_t>(byte));
    cursor.SkipBlanks();
    comma = cursor.Accept(u',');
  }
}

bool IsAnsiText(std::uint32_t type) {
  return type == RegType::Sz || type == RegType::ExpandSz || type == RegType::MultiSz;
}

}  // namespace

Text ReadQuoted(RegLineCursor& cursor) {
  Text text;
  ReadQuotedUnits(cursor, [&text](char16_t unit) { text.push_back(unit); });
  return text;
}

void ReadQuotedUnits(RegLineCursor& cursor, const std::function<void(char16_t)>& put) {
  if (!cursor.Accept(u'"')) cursor.Fail("expected a quoted name");
  for (;;) {
    if (cursor.AtEnd()) cursor.Fail("a quoted string has no closing quote");
    const char16_t c = cursor.Next();
    if (c == u'"') return;
    if (c != u'\\') {
      put(c);
      continue;
    }
    if (cursor.AtEnd()) cursor.Fail("a quoted string has no closing quote");
    // regedit writes line breaks and zeros inside a text as these escapes.
    const char16_t escaped = cursor.Next();
    switch (escaped) {
      case u'\\':
      case u'"': put(escaped); break;
      case u'r': put(u'\r'); break;
      case u'n': put(u'\n'); break;
      case u'0': put(u'\0'); break;
      default:
        cursor.Fail("unknown escape \\" + ToUtf8(TextView(&escaped, 1)) +
                    " in a quoted string (\\\\, \\\", \\r, \\n and \\0 are allowed)");
    }
  }
}

RegValueLine ReadValueLine(RegLineCursor& cursor, RegFileFormat format) {
  RegValueLine value;
  if (!cursor.Accept(u'@')) value.name = ReadQuoted(cursor);
  cursor.SkipBlanks();
  if (!cursor.Accept(u'=')) cursor.Fail("expected = after the value name");
  cursor.SkipBlanks();

  if (cursor.Peek() == u'"' && !cursor.AtEnd()) {
    // Unescaped where it stands: a long text costs its line's room once, not three times.
    value.type = RegType::Sz;
    const std::size_t begin = cursor.Position() + 1;
    std::size_t end = begin;
    ReadQuotedUnits(cursor, [&](char16_t unit) { cursor.Put(end++, unit); });
    cursor.SkipBlanks();
    if (!cursor.AtEnd() && cursor.Peek() != u';') cursor.Fail("unexpected " + Shown(cursor.Rest()) + " after the value");
    value.text = cursor.TakeLine(begin, end);
    return value;
  } else if (cursor.Accept(u'-')) {
    value.deletion = true;
  } else if (cursor.AcceptWord(u"dword:")) {
    std::uint32_t number = 0;
    if (!ReadHexNumber(cursor, 8, number)) cursor.Fail("dword: needs 1 to 8 hex digits");
    value.type = RegType::Dword;
    for (int shift = 0; shift < 32; shift += 8) value.data.push_back(static_cast<std::uint8_t>(number >> shift));
  } else if (cursor.AcceptWord(u"hex")) {
    value.type = RegType::Binary;
    if (cursor.Accept(u'(') && !(ReadHexNumber(cursor, 8, value.type) && cursor.Accept(u')')))
      cursor.Fail("hex(N): needs a type number of 1 to 8 hex digits");
    if (!cursor.Accept(u':')) cursor.Fail("expected : after hex");
    value.data = ReadHexList(cursor);
    if (format == RegFileFormat::Regedit4 && IsAnsiText(value.type)) value.data = AnsiToUtf16Bytes(value.data);
    return value;  // the list has read to the end of its last line
  } else {
    cursor.Fail("unknown value data " + Shown(cursor.Rest()) + " (expected \"text\", -, dword: or hex)");
  }
  cursor.SkipBlanks();
  if (!cursor.AtEnd() && cursor.Peek() != u';') cursor.Fail("unexpected " + Shown(cursor.Rest()) + " after the value");
  return value;
}

}  // namespace nv
