// Applying a parsed file, exporting a key as regedit does, and the round trip between them.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "common/Utf.h"
#include "host/regfile/RegFile.h"
#include "store/RegistryKey.h"
#include "store/ValueBytes.h"
#include "tests/support/TestRegistry.h"

namespace nv {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Whether an abandoned batch takes its writes back: the hive promises it, the Windows registry
// does not.
#ifdef _WIN32
constexpr bool kBatchesRollBack = false;
#else
constexpr bool kBatchesRollBack = true;
#endif

// Keys of these tests are under SOFTWARE\NOVRA: Windows keeps the machine's root for itself.
class RegFile : public ::testing::Test {
 protected:
  Registry& Reg() { return owner_->Get(); }
  static Text Path(TextView subKey) { return u"SOFTWARE\\NOVRA\\" + Text(subKey); }
  // Written in pieces of whole lines (a character is never cut between two), the byte-order
  // mark first, and the pieces joined are the file.
  std::string Export(TextView subKey, bool utf16 = false) {
    std::vector<std::string> leftOut;
    std::string file;
    const std::string lineEnd = utf16 ? std::string("\r\0\n\0", 4) : std::string("\r\n");
    ExportRegKey(Reg(), {RegRoot::LocalMachine, Path(subKey)}, utf16, leftOut, [&](std::string_view piece) {
      if (file.empty() && utf16) {
        EXPECT_EQ(piece, "\xFF\xFE");
      } else {
        EXPECT_TRUE(piece.ends_with(lineEnd)) << "a piece of " << piece.size() << " bytes";
      }
      file.append(piece);
    });
    EXPECT_TRUE(leftOut.empty()) << leftOut.front();
    EXPECT_EQ(ExportRegKey(Reg(), {RegRoot::LocalMachine, Path(subKey)}, utf16, leftOut), file);
    return file;
  }
  bool Exists(TextView subKey) {
    UniqueRegKey key;
    return OpenUniqueKey(Reg(), RegRoot::LocalMachine, Path(subKey), RegAccess::Read, key) == RegError::Success;
  }
  void PutRaw(TextView subKey, const Text& name, std::uint32_t type, Bytes data) {
    test::PutRaw(Reg(), Path(subKey), name, type, std::move(data));
  }
  std::optional<test::RawValue> GetRaw(TextView subKey, const Text& name) {
    return test::GetRaw(Reg(), Path(subKey), name);
  }
  std::vector<Text> ValueNames(TextView subKey) { return test::ValueNames(Reg(), Path(subKey)); }
  // The export spells keys as stored: "SOFTWARE" on Windows, "Software" under Wine.
  std::string StoredSoftware() {
    UniqueRegKey machine;
    EXPECT_EQ(OpenUniqueKey(Reg(), RegRoot::LocalMachine, u"", RegAccess::Read, machine), RegError::Success);
    Text name;
    for (std::uint32_t i = 0; Reg().EnumKey(machine.Get(), i, name) == RegError::Success; ++i) {
      if (ToUtf8(name) == "SOFTWARE" || ToUtf8(name) == "Software") return ToUtf8(name);
    }
    return "SOFTWARE";
  }

  std::unique_ptr<test::TestRegistryOwner> owner_ = test::MakeTestRegistry();
};

TEST_F(RegFile, ExportWritesWhatRegeditWrites) {
  Bytes counting(50);
  for (std::size_t i = 0; i < counting.size(); ++i) counting[i] = static_cast<std::uint8_t>(i);
  // Written in the order Wine enumerates values in, whatever the order of writing: by name;
  // but the default value second, which the export still puts first.
  PutRaw(u"X", u"b", RegType::Dword, {0x2A, 0, 0, 0});
  PutRaw(u"X", u"", RegType::Sz, BytesFromText(u"def"));
  PutRaw(u"X", u"bin", RegType::Binary, counting);
  PutRaw(u"X", u"exp", RegType::ExpandSz, BytesFromText(u"%P%"));
  PutRaw(u"X", u"nl", RegType::Sz, BytesFromText(u"a\nb"));
  PutRaw(u"X", u"none", RegType::None, {});
  PutRaw(u"X", u"odd", RegType::Sz, {'a'});
  PutRaw(u"X", u"s\\\"", RegType::Sz, BytesFromText(u"a\\\"b"));
  PutRaw(u"X", u"short", RegType::Dword, {1, 2});
  PutRaw(u"X\\Zed", u"z", RegType::Sz, BytesFromText(u""));
  PutRaw(u"X\\alpha\\Deep", u"q", RegType::Qword, {1, 0, 0, 0, 0, 0, 0, 0});
  const std::string key = "[HKEY_LOCAL_MACHINE\\" + StoredSoftware() + "\\NOVRA\\X";
  const std::string expected =
      std::string("Windows Registry Editor Version 5.00\r\n"
                  "\r\n") +
      key + "]\r\n"
      "@=\"def\"\r\n"
      "\"b\"=dword:0000002a\r\n"
      "\"bin\"=hex:00,01,02,03,04,05,06,07,08,09,0a,0b,0c,0d,0e,0f,10,11,12,13,14,15,\\\r\n"
      "  16,17,18,19,1a,1b,1c,1d,1e,1f,20,21,22,23,24,25,26,27,28,29,2a,2b,2c,2d,2e,\\\r\n"
      "  2f,30,31\r\n"
      "\"exp\"=hex(2):25,00,50,00,25,00,00,00\r\n"
      "\"nl\"=hex(1):61,00,0a,00,62,00,00,00\r\n"
      "\"none\"=hex(0):\r\n"
      "\"odd\"=hex(1):61\r\n"
      "\"s\\\\\\\"\"=\"a\\\\\\\"b\"\r\n"
      "\"short\"=hex(4):01,02\r\n"
      "\r\n" +
      key + "\\alpha]\r\n"
      "\r\n" +
      key + "\\alpha\\Deep]\r\n"
      "\"q\"=hex(b):01,00,00,00,00,00,00,00\r\n"
      "\r\n" +
      key + "\\Zed]\r\n"
      "\"z\"=\"\"\r\n"
      "\r\n";
  EXPECT_EQ(Export(u"x"), expected);  // names as stored, whatever the case asked for
  const Bytes wide = BytesFromText(FromUtf8(expected));
  EXPECT_EQ(Export(u"X", true), "\xFF\xFE" + std::string(wide.begin(), wide.end() - 2));
  EXPECT_THROW(Export(u"Missing"), std::runtime_error);
}

// What a .reg file cannot carry is left out and listed, and everything else is written.
TEST_F(RegFile, ExportLeavesOutWhatAFileCannotCarry) {
  const Text surrogate(1, char16_t(0xD800));
  PutRaw(u"Odd", u"kept", RegType::Binary, {1});
  PutRaw(u"Odd", u"lone" + surrogate, RegType::Binary, {2});
  PutRaw(u"Odd\\Sub" + surrogate, u"v", RegType::Binary, {3});
  for (const bool utf16 : {true, false}) {
    std::vector<std::string> leftOut;
    const std::string file = ExportRegKey(Reg(), {RegRoot::LocalMachine, Path(u"Odd")}, utf16, leftOut);
    EXPECT_NE(file.find(utf16 ? std::string("k\0e\0p\0t\0", 8) : "kept"), std::string::npos);
    // UTF-8 has no form for a lone surrogate; the UTF-16 file keeps both.
    EXPECT_EQ(leftOut.size(), utf16 ? 0u : 2u);
  }
}

TEST_F(RegFile, ExportThenImportReproducesTheKeyExactly) {
  const Text surrogate(1, char16_t(0xD800));
  // The default value first: regedit writes it first, so only there does it keep its place.
  PutRaw(u"RT\\MixedCase", u"", RegType::ExpandSz, BytesFromText(u"%TEMP%"));
  PutRaw(u"RT\\MixedCase", u"Zeta", RegType::Sz, BytesFromText(u"élève \"quoted\" \\ back"));
  PutRaw(u"RT\\MixedCase", u"alpha", RegType::Sz, {0, 0, 'x', 0, 0, 0});
  PutRaw(u"RT\\MixedCase", u"crlf", RegType::Sz, BytesFromText(u"a\r\nb"));
  PutRaw(u"RT\\MixedCase", u"lone", RegType::Sz, BytesFromText(u"x" + surrogate));
  PutRaw(u"RT\\MixedCase", u"big", RegType::Binary, Bytes(3000, 0x5C));
  PutRaw(u"RT\\MixedCase", u"log", RegType::Sz, BytesFromText(Text(100000, u'\u00e9') + u"\r\n\U0001F600"));  // many pieces
  PutRaw(u"RT\\MixedCase", u"typed", 0x12345678u, {1, 2, 3});
  PutRaw(u"RT\\MixedCase", u"multi", RegType::MultiSz, BytesFromText(Text(u"a\0b\0", 4)));
  PutRaw(u"RT\\Empty Key", u"d", RegType::Dword, {0xFF, 0xFF, 0xFF, 0xFF});
  PutRaw(u"RT\\Empty Key\\Child", u"x", RegType::Binary, {});
  for (const bool utf16 : {true, false}) {
    SCOPED_TRACE(utf16);
    const std::string before = Export(u"RT", utf16);
    const auto names = ValueNames(u"RT\\MixedCase");
    ASSERT_EQ(Reg().DeleteTree(RegRoot::LocalMachine, Path(u"RT")), RegError::Success);
    ApplyRegFile(Reg(), ParseRegFile(before));
    EXPECT_EQ(Export(u"RT", utf16), before);
    EXPECT_EQ(ValueNames(u"RT\\MixedCase"), names);
    EXPECT_EQ(GetRaw(u"RT\\MixedCase", u"alpha")->data, (Bytes{0, 0, 'x', 0, 0, 0}));
    EXPECT_EQ(GetRaw(u"RT\\MixedCase", u"typed")->type, 0x12345678u);
  }
}

TEST_F(RegFile, ApplyDeletesAndLandsWholeOrNotAtAll) {
  PutRaw(u"Del\\Sub", u"v", RegType::Binary, {1});
  PutRaw(u"K", u"gone", RegType::Binary, {1});
  PutRaw(u"K", u"kept", RegType::Binary, {1});
  ApplyRegFile(Reg(), ParseRegFile("Windows Registry Editor Version 5.00\r\n"
                                   "[-HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\Del]\r\n"
                                   "[-HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\NotThere]\r\n"
                                   "[HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\K]\r\n"
                                   "\"gone\"=-\r\n"
                                   "\"missing\"=-\r\n"
                                   "[HKEY_LOCAL_MACHINE\\SOFTWARE\\NOVRA\\New\\Key]\r\n"));
  EXPECT_FALSE(Exists(u"Del"));
  EXPECT_EQ(ValueNames(u"K"), std::vector<Text>{u"kept"});
  EXPECT_TRUE(Exists(u"New\\Key"));

  // A step that fails half-way is reported by its line and, where batches roll back, takes
  // back the steps before it.
  using Kind = RegFileOperation::Kind;
  const std::vector<RegFileOperation> operations = {
      {Kind::DeleteKey, {RegRoot::LocalMachine, Path(u"K")}, u"", 0, {}, 2, {}},
      {Kind::SetValue, {RegRoot::LocalMachine, Path(u"Fresh")}, u"v", RegType::Binary, {1}, 4, {}},
      {Kind::CreateKey, {RegRoot::LocalMachine, u"\\Bad"}, u"", 0, {}, 7, {}},
  };
  try {
    ApplyRegFile(Reg(), operations);
    ADD_FAILURE() << "applied";
  } catch (const RegFileError& e) {
    EXPECT_EQ(e.Line(), 7u) << e.what();
  }
  if (!kBatchesRollBack) return;
  EXPECT_EQ(ValueNames(u"K"), std::vector<Text>{u"kept"});
  EXPECT_FALSE(Exists(u"Fresh"));
}

}  // namespace
}  // namespace nv
