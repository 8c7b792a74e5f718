#include <gtest/gtest.h>

#include <span>
#include <stdexcept>

#include "common/CaseMapping.h"
#include "common/Error.h"
#include "common/Utf.h"
#include "store/KeyValueSnapshot.h"
#include "store/RegistryKey.h"
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

// A loader reads mostly in the written order; any other order, case or absent name must give
// the answers of one read each, whether the snapshot finds them in order, by walking or by its
// index (built once enough names were out of order).
TEST_F(RegistryOperations, SnapshotAnswersAsSingleReadsInAnyOrder) {
  std::vector<Text> written;
  for (int i = 0; i < 24; ++i) written.push_back(u"Fields(" + DecimalText(i) + u").Var");
  for (const Text& name : written) PutText(Reg(), kTask, name, u"@" + name);
  PutDword(Reg(), kTask, u"Élan", 7);

  std::vector<Text> reversed(written.rbegin(), written.rend());
  std::vector<Text> absentBetween;
  for (const Text& name : written) {
    absentBetween.push_back(name);
    absentBetween.push_back(u"Absent" + name);
  }
  std::vector<Text> otherCase;
  for (Text name : written) {
    UpperCaseInPlace(name);
    otherCase.push_back(name);
  }
  const struct {
    const char* what;
    std::vector<Text> names;
  } cases[] = {
      {"in order", written},
      {"in reverse", reversed},
      {"an absent name before each", absentBetween},
      {"upper-cased", otherCase},
      {"accented name in either case, twice each", {u"élan", u"ÉLAN", u"Élan", u"Fields(3).Var", u"fields(3).var"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    RegKey key = 0;
    ASSERT_TRUE(OpenRegistryKey(u"T", RegAccess::QueryValue, key));
    KeyValueSnapshot snapshot(Reg(), key);
    for (const Text& name : c.names) EXPECT_EQ(snapshot.Read(name), ReadRegistryValue(u"T", name)) << ToUtf8(name);
    CloseRegistryKey(key);
  }
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

// A value made in pieces is the pieces joined, on either side of the size from which the hive
// writes values in place; pieces that do not come to the size given, or a maker that fails,
// leave the value as it was.
TEST_F(RegistryOperations, ValuesMadeInPiecesLandWholeOrNotAtAll) {
  constexpr std::size_t kMiB = 1 << 20;
  UniqueRegKey key;
  ASSERT_EQ(CreateUniqueKey(Reg(), RegRoot::LocalMachine, kTask, RegAccess::ReadWrite, key), RegError::Success);
  const std::vector<std::uint8_t> before(5, 9);
  PutRaw(Reg(), kTask, u"V", RegType::Binary, before);
  const struct Case {
    const char* name;
    std::size_t size;    // the data made
    std::size_t piece;   // in pieces of this many bytes
    std::int64_t told;   // the size given to the registry, less the data's own
    bool throws;
  } cases[] = {
      {"small, in small pieces", 1000, 7, 0, false},      {"large, in odd pieces", 2 * kMiB + 3, 300001, 0, false},
      {"large, one piece", kMiB, kMiB, 0, false},         {"empty", 0, 1, 0, false},
      {"small, one byte short", 1000, 7, 1, false},       {"large, one byte short", 2 * kMiB, 65536, 1, false},
      {"large, one byte over", 2 * kMiB, 65536, -1, false},
      {"large, the maker fails", 2 * kMiB, 65536, 0, true}, {"small, the maker fails", 10, 1, 0, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<std::uint8_t> data(c.size);
    for (std::size_t i = 0; i < data.size(); ++i) data[i] = static_cast<std::uint8_t>(i * 7 + 3);
    const ValueMaker make = [&](const ValueBytesSink& sink) {
      for (std::size_t at = 0; at < data.size(); at += c.piece) {
        sink(std::span(data).subspan(at, std::min(c.piece, data.size() - at)));
        if (c.throws && at > data.size() / 2) throw std::runtime_error("the maker failed");
      }
    };
    const auto told = static_cast<std::uint32_t>(static_cast<std::int64_t>(c.size) + c.told);
    const bool lands = c.told == 0 && !c.throws;
    if (c.throws) {
      EXPECT_THROW(Reg().SetValueMade(key.Get(), u"V", RegType::Binary, told, make), std::runtime_error);
    } else {
      EXPECT_EQ(Reg().SetValueMade(key.Get(), u"V", RegType::Binary, told, make),
                lands ? RegError::Success : RegError::InvalidParameter);
    }
    const auto stored = GetRaw(Reg(), kTask, u"V");
    ASSERT_TRUE(stored.has_value());
    EXPECT_TRUE(stored->data == (lands ? data : before));
    PutRaw(Reg(), kTask, u"V", RegType::Binary, before);  // and the registry still writes
  }
}

TEST_F(RegistryOperations, EmptyContextFailsQuietly) {
  SetRegistryContext(static_cast<std::int32_t>(RegRoot::LocalMachine), u"");
  EXPECT_EQ(ReadRegistryValue(u"T", u"V"), Variant::FromText(u""));
  EXPECT_FALSE(RegistryKeyExists(u"T"));
}

}  // namespace
}  // namespace nv::test
