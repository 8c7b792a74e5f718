#include <gtest/gtest.h>

#include "common/Error.h"
#include "store/KeyValueSnapshot.h"
#include "store/ModuleState.h"
#include "store/RegistryOperations.h"
#include "store/ValueBytes.h"
#include "tests/support/TestRegistry.h"

namespace nv::test {
namespace {

using RegistryOperations = TaskContextTest;

std::vector<std::uint8_t> Units(const Text& text) {  // UTF-16LE without adding a terminator
  std::vector<std::uint8_t> bytes = BytesFromText(text);
  bytes.resize(bytes.size() - 2);
  return bytes;
}

TEST_F(RegistryOperations, ReadFollowsTheReaderRules) {
  struct Case {
    const char* what;
    std::uint32_t type;
    std::vector<std::uint8_t> data;
    Variant expected;
  };
  const Text longest(65535, u'x');
  const Case cases[] = {
      {"text", RegType::Sz, BytesFromText(u"abc"), Variant::FromText(u"abc")},
      {"accented text", RegType::Sz, BytesFromText(u"élève"), Variant::FromText(u"élève")},
      {"empty text", RegType::Sz, BytesFromText(u""), Variant::FromText(u"")},
      {"text without terminator loses its last unit", RegType::Sz, Units(u"abc"), Variant::FromText(u"ab")},
      {"65,535 characters fit the buffer", RegType::Sz, BytesFromText(longest), Variant::FromText(longest)},
      {"65,536 characters do not", RegType::Sz, BytesFromText(Text(65536, u'x')), Variant::FromText(u"")},
      {"70,000 characters do not", RegType::Sz, BytesFromText(Text(70000, u'x')), Variant::FromText(u"")},
      {"multi-string loses two units", RegType::MultiSz, Units(Text(u"a\0b\0\0", 5)), Variant::FromText(Text(u"a\0b", 3))},
      {"expandable text is empty", RegType::ExpandSz, BytesFromText(u"%PATH%"), Variant()},
      {"binary is empty", RegType::Binary, {1, 2, 3}, Variant()},
      {"number", RegType::Dword, {5, 0, 0, 0}, Variant::FromLong(5)},
      {"number with the top bit", RegType::Dword, {0xFF, 0xFF, 0xFF, 0xFF}, Variant::FromLong(-1)},
      {"short number", RegType::Dword, {7, 1}, Variant::FromLong(263)},
      {"number of eight bytes does not fit", RegType::Dword, {1, 0, 0, 0, 0, 0, 0, 0}, Variant::FromText(u"")},
      {"zero-size value", RegType::None, {}, Variant::FromText(u"")},
      {"zero-size text", RegType::Sz, {}, Variant::FromText(u"")},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    PutRaw(Reg(), kTask, u"V", c.type, c.data);
    EXPECT_EQ(ReadRegistryValue(u"T", u"V"), c.expected);
    EXPECT_EQ(ReadRegistryValue(u"t", u"v"), c.expected) << "names are not case-sensitive";
    // A loader's one enumeration gives the same answers.
    RegKey key = 0;
    ASSERT_TRUE(OpenRegistryKey(u"T", RegAccess::QueryValue, key));
    KeyValueSnapshot snapshot(Reg(), key);
    EXPECT_EQ(snapshot.Read(u"v"), c.expected);
    EXPECT_EQ(snapshot.Read(u"Missing"), Variant::FromText(u""));
    CloseRegistryKey(key);
  }
  EXPECT_EQ(ReadRegistryValue(u"T", u"Missing"), Variant::FromText(u""));
  EXPECT_EQ(ReadRegistryValue(u"Nowhere", u"V"), Variant::FromText(u""));
}

TEST_F(RegistryOperations, WriteByKind) {
  EXPECT_TRUE(WriteRegistryValue(u"T", u"Text", ValueKind::Text, u"élève"));
  EXPECT_TRUE(WriteRegistryValue(u"T", u"Empty", ValueKind::Text, u""));
  EXPECT_TRUE(WriteRegistryValue(u"T", u"Kind2", 2, u"x"));
  EXPECT_TRUE(WriteRegistryValue(u"T", u"Number", ValueKind::Number, u"-3"));
  EXPECT_TRUE(WriteRegistryValue(u"T", u"Hex", ValueKind::Number, u"&H10"));

  const auto text = GetRaw(Reg(), kTask, u"Text");
  ASSERT_TRUE(text);
  EXPECT_EQ(text->type, RegType::Sz);
  EXPECT_EQ(text->data, BytesFromText(u"élève"));
  const auto empty = GetRaw(Reg(), kTask, u"Empty");
  ASSERT_TRUE(empty);
  EXPECT_EQ(empty->type, RegType::Sz);
  EXPECT_EQ(empty->data.size(), 2u) << "the empty text keeps its terminator";
  EXPECT_EQ(GetRaw(Reg(), kTask, u"Kind2")->type, RegType::Sz);
  const auto number = GetRaw(Reg(), kTask, u"Number");
  EXPECT_EQ(number->type, RegType::Dword);
  EXPECT_EQ(number->data, (std::vector<std::uint8_t>{0xFD, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(ReadRegistryValue(u"T", u"Hex"), Variant::FromLong(16));
}

TEST_F(RegistryOperations, WriteOfAnotherKindCreatesTheKeyOnly) {
  EXPECT_TRUE(WriteRegistryValue(u"New", u"V", 3, u"x"));
  EXPECT_TRUE(RegistryKeyExists(u"New"));
  EXPECT_TRUE(ValueNames(Reg(), kTasks + u"\\New").empty());
}

TEST_F(RegistryOperations, NumberThatIsNoNumberIsRaisedAfterTheKeyIsMade) {
  try {
    WriteRegistryValue(u"T", u"N", ValueKind::Number, u"twelve");
    FAIL() << "no error";
  } catch (const RuntimeError& e) {
    EXPECT_EQ(e.Number(), ErrorNumber::TypeMismatch);
  }
  EXPECT_TRUE(RegistryKeyExists(u"T"));
  EXPECT_THROW(WriteRegistryValue(u"T", u"N", ValueKind::Number, u"4294967296"), RuntimeError);
}

TEST_F(RegistryOperations, DeleteAndExistence) {
  EXPECT_FALSE(RegistryKeyExists(u"T"));
  EXPECT_FALSE(DeleteRegistryValue(u"T", u"V"));
  PutText(Reg(), kTask, u"V", u"x");
  EXPECT_TRUE(RegistryKeyExists(u"t"));
  EXPECT_TRUE(DeleteRegistryValue(u"T", u"v"));
  EXPECT_FALSE(DeleteRegistryValue(u"T", u"V"));
  EXPECT_FALSE(GetRaw(Reg(), kTask, u"V"));
}

TEST_F(RegistryOperations, EmptyContextFailsQuietly) {
  SetRegistryContext(static_cast<std::int32_t>(RegRoot::LocalMachine), u"");
  EXPECT_EQ(ReadRegistryValue(u"T", u"V"), Variant::FromText(u""));
  EXPECT_FALSE(RegistryKeyExists(u"T"));
}

}  // namespace
}  // namespace nv::test
