// Reading regedit's files: every piece of syntax, every encoding, and each malformed case
// refused with its line.
#include <gtest/gtest.h>

#include "common/Utf.h"
#include "host/regfile/RegFile.h"
#include "host/regfile/RegFileText.h"

namespace nv {
namespace {

using Kind = RegFileOperation::Kind;
using Bytes = std::vector<std::uint8_t>;

const std::string kHeader = "Windows Registry Editor Version 5.00\r\n\r\n";

Bytes Utf16(TextView text, bool terminated = true) {
  Bytes bytes;
  for (const char16_t unit : text)
    bytes.insert(bytes.end(), {static_cast<std::uint8_t>(unit), static_cast<std::uint8_t>(unit >> 8)});
  if (terminated) bytes.insert(bytes.end(), {0, 0});
  return bytes;
}

std::string AsUtf16File(const std::string& utf8) {
  const Bytes bytes = Utf16(FromUtf8(utf8), false);
  return "\xFF\xFE" + std::string(bytes.begin(), bytes.end());
}

TEST(RegKeyPath, ParsesRootsAndRefusesBadPaths) {
  const struct Case {
    TextView text;
    RegKey root;
    TextView subKey;
  } good[] = {
      {u"HKEY_LOCAL_MACHINE\\SOFTWARE\\X", RegRoot::LocalMachine, u"SOFTWARE\\X"},
      {u"hklm\\a\\\\", RegRoot::LocalMachine, u"a"},
      {u"HKEY_CURRENT_USER", RegRoot::CurrentUser, u""},
      {u"hkey_classes_root\\.txt", RegRoot::ClassesRoot, u".txt"},
      {u"HKCR\\x", RegRoot::ClassesRoot, u"x"},
      {u"HKU\\S-1", RegRoot::Users, u"S-1"},
      {u"HKEY_USERS", RegRoot::Users, u""},
      {u"HKCC\\System", RegRoot::CurrentConfig, u"System"},
      {u"HKEY_CURRENT_CONFIG\\a]b", RegRoot::CurrentConfig, u"a]b"},
  };
  for (const Case& c : good) {
    const auto path = ParseKeyPath(c.text);
    ASSERT_TRUE(path.has_value()) << ToUtf8(c.text);
    EXPECT_EQ(*path, (RegKeyPath{c.root, Text(c.subKey)}));
  }
  const Text tooLong = u"HKLM\\" + Text(256, u'x');
  for (const TextView bad : {TextView(u""), TextView(u"HKEY_LOCAL_MACHINEX"), TextView(u"HKLM\\\\a"),
                             TextView(u"HKLM\\a\\\\b"), TextView(u"SOFTWARE\\X"), TextView(tooLong)}) {
    EXPECT_FALSE(ParseKeyPath(bad).has_value()) << ToUtf8(bad);
  }
  EXPECT_EQ(KeyPathText(RegRoot::LocalMachine, u"a\\b"), u"HKEY_LOCAL_MACHINE\\a\\b");
  EXPECT_EQ(KeyPathText(RegRoot::CurrentUser, u""), u"HKEY_CURRENT_USER");
}

TEST(RegFileParse, ValueSyntax) {
  const struct Case {
    std::string line;
    Kind kind;
    Text name;
    std::uint32_t type;
    Bytes data;
  } cases[] = {
      {R"("a"="x")", Kind::SetValue, u"a", RegType::Sz, Utf16(u"x")},
      {R"("q\"b\\"="C:\\dir \"x\" ; =")", Kind::SetValue, u"q\"b\\", RegType::Sz, Utf16(u"C:\\dir \"x\" ; =")},
      {R"(@="")", Kind::SetValue, u"", RegType::Sz, Utf16(u"")},
      // The escapes regedit writes for line breaks and zeros inside a text.
      {R"("m"="l1\r\nl2\n\0end\\n")", Kind::SetValue, u"m", RegType::Sz, Utf16(Text(u"l1\r\nl2\n\0end\\n", 13))},
      {"\"u\"=\"\xC3\xA9t\xC3\xA9 \xE6\x97\xA5\"", Kind::SetValue, u"u", RegType::Sz, Utf16(u"été 日")},
      {R"(  "a" = "x"   ; trailing comment)", Kind::SetValue, u"a", RegType::Sz, Utf16(u"x")},
      {R"("n"=dword:0000002a)", Kind::SetValue, u"n", RegType::Dword, {0x2A, 0, 0, 0}},
      {R"("n"=DWORD:FFFFFFFF)", Kind::SetValue, u"n", RegType::Dword, {0xFF, 0xFF, 0xFF, 0xFF}},
      {R"("b"=hex:00,ff,1)", Kind::SetValue, u"b", RegType::Binary, {0x00, 0xFF, 0x01}},
      {R"("b"=hex:)", Kind::SetValue, u"b", RegType::Binary, {}},
      {R"("e"=hex(2):25,00,00,00)", Kind::SetValue, u"e", RegType::ExpandSz, {0x25, 0, 0, 0}},
      {R"("q"=hex(b):01,00,00,00,00,00,00,00)", Kind::SetValue, u"q", RegType::Qword, {1, 0, 0, 0, 0, 0, 0, 0}},
      {R"("t"=hex(12345678):01)", Kind::SetValue, u"t", 0x12345678u, {1}},
      {"\"c\"=hex:01,02,\\\r\n  03,\\\r\n\t04 \r\n", Kind::SetValue, u"c", RegType::Binary, {1, 2, 3, 4}},
      {"\"c\"=hex(7):61,00,\\\n  00,00\n", Kind::SetValue, u"c", RegType::MultiSz, {0x61, 0, 0, 0}},
      {R"("x"=-)", Kind::DeleteValue, u"x", RegType::None, {}},
      {R"(@=-)", Kind::DeleteValue, u"", RegType::None, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    const auto operations = ParseRegFile(kHeader + "[HKEY_LOCAL_MACHINE\\T]\r\n" + c.line + "\r\n");
    ASSERT_EQ(operations.size(), 2u);
    EXPECT_EQ(operations[0], (RegFileOperation{Kind::CreateKey, {RegRoot::LocalMachine, u"T"}, u"", 0, {}, 3, {}}));
    EXPECT_EQ(operations[1], (RegFileOperation{c.kind, {RegRoot::LocalMachine, u"T"}, c.name, c.type, c.data, 4, {}}));
  }
}

TEST(RegFileParse, KeyLinesCommentsAndBlankLines) {
  const auto operations = ParseRegFile(kHeader +
                                       "; a comment\r\n"
                                       "   \r\n"
                                       "[-HKEY_CURRENT_USER\\Gone\\]\r\n"
                                       "  [HKEY_CLASSES_ROOT\\a]b]  \r\n"
                                       "\r\n");
  ASSERT_EQ(operations.size(), 2u);
  EXPECT_EQ(operations[0], (RegFileOperation{Kind::DeleteKey, {RegRoot::CurrentUser, u"Gone"}, u"", 0, {}, 5, {}}));
  EXPECT_EQ(operations[1], (RegFileOperation{Kind::CreateKey, {RegRoot::ClassesRoot, u"a]b"}, u"", 0, {}, 6, {}}));
}

TEST(RegFileParse, EveryEncodingGivesTheSameOperations) {
  const std::string utf8 = kHeader + "[HKEY_LOCAL_MACHINE\\\xC3\x89]\r\n\"\xC3\xA9\"=\"\xC3\xBC\"\r\n";
  const std::string lf =
      "Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\\xC3\x89]\n\"\xC3\xA9\"=\"\xC3\xBC\"\n";
  const std::string cp1252 = "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\\xC9]\r\n\"\xE9\"=\"\xFC\"\r\n";
  const std::string regedit4Utf8 = "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\\xC3\x89]\r\n\"\xC3\xA9\"=\"\xC3\xBC\"\r\n";
  const auto expected = ParseRegFile(utf8);
  ASSERT_EQ(expected.size(), 2u);
  EXPECT_EQ(expected[1].name, u"é");
  EXPECT_EQ(expected[1].data, Utf16(u"ü"));
  for (const std::string& file : {AsUtf16File(utf8), "\xEF\xBB\xBF" + utf8, lf, cp1252, regedit4Utf8})
    EXPECT_EQ(ParseRegFile(file), expected);
  // REGEDIT4 keeps the text of hex(1), hex(2) and hex(7) as ANSI bytes; the registry wants UTF-16.
  const auto ansi = ParseRegFile(
      "REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\T]\r\n\"e\"=hex(2):41,e9,00\r\n"
      "\"m\"=hex(7):61,00,62,00,00\r\n\"b\"=hex:e9\r\n");
  ASSERT_EQ(ansi.size(), 4u);
  EXPECT_EQ(ansi[1].data, Utf16(u"Aé"));
  EXPECT_EQ(ansi[2].data, (Bytes{0x61, 0, 0, 0, 0x62, 0, 0, 0, 0, 0}));
  EXPECT_EQ(ansi[3].data, Bytes{0xE9});
}

// LF, CRLF and CR CR LF, as editors write them, in either encoding.
TEST(RegFileParse, EveryEditorsLineEndsAreRead) {
  const auto expected = ParseRegFile(kHeader + "[HKEY_LOCAL_MACHINE\\T]\r\n\"a\"=hex:01,\\\r\n  02\r\n\"b\"=\"x\"\r\n");
  ASSERT_EQ(expected.size(), 3u);
  for (const std::string end : {"\n", "\r\n", "\r\r\n"}) {
    const std::string file = "Windows Registry Editor Version 5.00" + end + end + "[HKEY_LOCAL_MACHINE\\T]" + end +
                             "\"a\"=hex:01,\\" + end + "  02" + end + "\"b\"=\"x\"" + end;
    for (const std::string& form : {file, AsUtf16File(file)}) {
      const auto operations = ParseRegFile(form);
      ASSERT_EQ(operations.size(), expected.size());
      for (std::size_t i = 0; i < operations.size(); ++i) {
        EXPECT_EQ(operations[i].data, expected[i].data);
        EXPECT_EQ(operations[i].name, expected[i].name);
      }
    }
  }
}

// Gives the file in pieces of a fixed size, as a pipe may: a line end, or the two bytes of
// one UTF-16 unit, may then be cut anywhere.
class BytesInPieces final : public RegByteSource {
 public:
  BytesInPieces(std::string_view bytes, std::size_t piece) : bytes_(bytes), piece_(piece) {}
  std::size_t Read(char* buffer, std::size_t size) override { return bytes_.Read(buffer, std::min(size, piece_)); }

 private:
  RegBytesInMemory bytes_;
  std::size_t piece_;
};

// Units with a line-feed byte (U+0A05, U+010A, U+0A0A), even one followed by a zero byte
// (U+0A05 U+0100), end no line in UTF-16; long texts and hex lists put the lines across the
// reader's 64 KiB blocks at every offset.
TEST(RegFileParse, LinesAreFoundWhereverTheBytesAreCut) {
  const Text tricky = u"\u0a05\u0100\u010a\u0a0a end";
  Text longText;
  while (longText.size() < 70000) longText += u"\u0a05\u0100x\u010a";
  Bytes hex;
  std::string hexLines = "\"a\"=hex:";
  for (int i = 0; i < 30000; ++i) {
    hex.push_back(static_cast<std::uint8_t>(i * 7));
    static constexpr char kDigits[] = "0123456789abcdef";
    hexLines += std::string{kDigits[hex.back() >> 4], kDigits[hex.back() & 15]};
    hexLines += i + 1 == 30000 ? "\r\n" : (i % 25 == 24 ? ",\\\r\n  " : ",");
  }
  const std::string file = kHeader + "[HKEY_LOCAL_MACHINE\\T]\r\n\"t\"=\"" + ToUtf8(tricky) + "\"\r\n" + hexLines +
                           "\"long\"=\"" + ToUtf8(longText) + "\"\n\"z\"=dword:00000001\r\n";
  for (const std::string& form : {file, AsUtf16File(file)}) {
    for (const std::size_t piece : {std::size_t{1}, std::size_t{3}, std::size_t{4097}, std::size_t{1} << 20}) {
      SCOPED_TRACE(std::to_string(form.size()) + " bytes in pieces of " + std::to_string(piece));
      BytesInPieces source(form, piece);
      std::vector<RegFileOperation> operations;
      ReadRegFile(source, [&](RegFileOperation& operation) { operations.push_back(std::move(operation)); });
      ASSERT_EQ(operations.size(), 5u);
      EXPECT_EQ(operations[1].text, tricky);
      EXPECT_EQ(operations[2].data, hex);
      EXPECT_EQ(operations[2].line, 5u);
      EXPECT_EQ(operations[3].text, longText);
      EXPECT_EQ(operations[3].line, 5u + 30000 / 25);
      EXPECT_EQ(operations[4].data, (Bytes{1, 0, 0, 0}));
    }
  }
}

TEST(RegFileParse, RefusesMalformedFilesWithTheLine) {
  const std::string key = kHeader + "[HKEY_LOCAL_MACHINE\\T]\r\n";  // lines 1 to 3
  const struct Case {
    std::string file;
    std::size_t line;
    const char* fragment;
  } cases[] = {
      {"", 1, "not a registry file"},
      {"REGEDIT5\r\n", 1, "not a registry file"},
      {"\xFE\xFF", 1, "big-endian"},
      {AsUtf16File("REGEDIT4\r\n"), 1, "not a registry file"},
      {AsUtf16File(kHeader) + "x", 3, "odd number"},
      {kHeader + "\"a\"=\"x\"\r\n", 3, "must follow a [key]"},
      {kHeader + "[-HKEY_LOCAL_MACHINE\\T]\r\n\"a\"=\"x\"\r\n", 4, "must follow a [key]"},
      {kHeader + "[HKEY_LOCAL_MACHINE\\T\r\n", 3, "closing ]"},
      {kHeader + "[HKEY_NOWHERE\\T]\r\n", 3, "not a registry key"},
      {kHeader + "[HKEY_LOCAL_MACHINE\\a\\\\b]\r\n", 3, "empty name"},
      {kHeader + "[-HKEY_LOCAL_MACHINE]\r\n", 3, "root key cannot be deleted"},
      {kHeader + "[HKEY_LOCAL_MACHINE\\T] x\r\n", 3, "after the key"},
      {key + "garbage\r\n", 4, "expected a [key] line"},
      {key + "\"a\"=\"x\\ty\"\r\n", 4, "unknown escape \\t"},
      {key + "\"a\"=\"x\r\n", 4, "no closing quote"},
      {key + "\"a\"\r\n", 4, "expected ="},
      {key + "\"a\"=\"x\" junk\r\n", 4, "after the value"},
      {key + "\"a\"=foo\r\n", 4, "unknown value data"},
      {key + "\"a\"=dword:123456789\r\n", 4, "dword"},
      {key + "\"a\"=dword:\r\n", 4, "dword"},
      {key + "\"a\"=hex(zz):00\r\n", 4, "hex(N)"},
      {key + "\"a\"=hex:01,zz\r\n", 4, "is not a hex byte"},
      {key + "\"a\"=hex:01,,02\r\n", 4, "is not a hex byte"},
      {key + "\"a\"=hex:01 02\r\n", 4, "expected a comma"},
      {key + "\"a\"=hex:01,\\\r\n  02,\\\r\n  0g\r\n", 6, "is not a hex byte"},
      {key + "\"a\"=hex:01,\\", 4, "nothing follows"},
      {key + "\"a\"=\"x\"\r\n\"\xC3\"=\"y\"\r\n", 5, "not valid UTF-8"},
      {key + "\"s\"=\"\xED\xA0\x80\"\r\n", 4, "not valid UTF-8"},  // an encoded surrogate
      {key + "\"o\"=\"\xC0\xAF\"\r\n", 4, "not valid UTF-8"},      // an overlong form
      {key + "\"a\rb\"=\"x\"\r\n", 4, "line break (CR)"},
      {kHeader + "[HKEY_LOCAL_MACHINE\\a\rb]\r\n", 3, "line break (CR)"},
      {key + "\"" + std::string(16384, 'n') + "\"=\"x\"\r\n", 4, "at most 16383"},
      {kHeader + "[HKEY_LOCAL_MACHINE\\" + std::string(256, 'k') + "]\r\n", 3, "at most 255"},
      {kHeader + "[HKEY_LOCAL_MACHINE" + [] {
         std::string path;
         for (int level = 0; level < 513; ++level) path += "\\L";
         return path;
       }() + "]\r\n",
       3, "at most 512"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.fragment);
    try {
      ParseRegFile(c.file);
      ADD_FAILURE() << "accepted";
    } catch (const RegFileError& e) {
      EXPECT_EQ(e.Line(), c.line) << e.what();
      EXPECT_NE(std::string(e.what()).find(c.fragment), std::string::npos) << e.what();
      EXPECT_EQ(std::string(e.what()).rfind("line " + std::to_string(c.line) + ": ", 0), 0u) << e.what();
    }
  }
}

}  // namespace
}  // namespace nv
