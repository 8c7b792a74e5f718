// The hive answers as the Windows registry does.
#include <gtest/gtest.h>

#include "common/Conversions.h"
#include "common/Utf.h"
#include "engine/PieceCut.h"
#include "host/StoredValue.h"
#include "platform/posix/SqliteHive.h"
#include "store/RegistryKey.h"
#include "store/ValueBytes.h"
#include "tests/posix/HiveSupport.h"
#include "tests/support/TestRegistry.h"

namespace nv::test {
namespace {

using Bytes = std::vector<std::uint8_t>;
constexpr RegKey kHklm = RegRoot::LocalMachine;
constexpr RegStatus ok = RegError::Success, denied = RegError::AccessDenied;

Bytes FirstBytes(Bytes bytes, std::size_t count) {
  bytes.resize(count);
  return bytes;
}

class Hive : public ::testing::Test {
 protected:
  // A handle the test owns; closed with the fixture.
  RegKey Key(TextView path, std::uint32_t access = RegAccess::AllAccess) {
    keys_.emplace_back();
    EXPECT_EQ(CreateUniqueKey(*hive_, kHklm, path, access, keys_.back()), ok) << ToUtf8(path);
    return keys_.back().Get();
  }
  RegStatus Set(RegKey key, TextView name, const Bytes& data, std::uint32_t type = RegType::Binary) {
    return hive_->SetValue(key, name, type, data.data(), static_cast<std::uint32_t>(data.size()));
  }
  std::vector<Text> SubKeys(RegKey key) {
    std::vector<Text> names;
    Text name;
    for (std::uint32_t i = 0; hive_->EnumKey(key, i, name) == ok; ++i) names.push_back(name);
    return names;
  }

  TempFolder folder_;
  std::unique_ptr<SqliteHive> hive_ = SqliteHive::Open(folder_.File("hive.db"));
  std::vector<UniqueRegKey> keys_;
};

TEST_F(Hive, PathsAndHandles) {
  Key(u"A\\B");
  const Text longName(256, u'n');
  const struct Case {
    TextView path;
    RegStatus open, create;
  } cases[] = {
      {u"A\\B", ok, ok},
      {u"a\\b\\\\", ok, ok},  // trailing backslashes name the same key
      {u"", ok, ok},          // a new handle to the parent itself
      {u"A\\Missing", RegError::FileNotFound, ok},
      {u"\\A", RegError::BadPathName, RegError::BadPathName},
      {u"A\\\\B", RegError::BadPathName, RegError::BadPathName},
      {longName, RegError::InvalidParameter, RegError::InvalidParameter},
      {TextView(longName).substr(1), RegError::FileNotFound, ok},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(ToUtf8(c.path));
    RegKey key = 1;
    EXPECT_EQ(hive_->OpenKey(kHklm, c.path, RegAccess::Read, key), c.open);
    EXPECT_TRUE(c.open == ok ? key != 0 && key != kHklm : key == 0);
    hive_->CloseKey(key);
    EXPECT_EQ(hive_->CreateKey(kHklm, c.path, RegAccess::Read, key), c.create);
    hive_->CloseKey(key);
  }
  RegKey key = 0;
  EXPECT_EQ(hive_->OpenKey(0x1234, u"A", RegAccess::Read, key), RegError::InvalidHandle);
  EXPECT_EQ(hive_->OpenKey(0x80000004u, u"A", RegAccess::Read, key), RegError::InvalidHandle);
  EXPECT_EQ(hive_->CloseKey(kHklm), ok);
  ASSERT_EQ(hive_->OpenKey(kHklm, u"A", RegAccess::Read, key), ok);
  EXPECT_EQ(hive_->CloseKey(key), ok);
  EXPECT_EQ(hive_->CloseKey(key), RegError::InvalidHandle);
}

TEST_F(Hive, NamesCompareWithoutCaseAndKeepTheirCase) {
  const RegKey made = Key(u"Software\\NoVra\\Élève");
  ASSERT_EQ(Set(made, u"Créé", BytesFromText(u"x"), RegType::Sz), ok);
  ASSERT_EQ(Set(Key(u"SOFTWARE\\novra\\ÉLÈVE"), u"CRÉÉ", {1, 0, 0, 0}, RegType::Dword), ok);  // the same value
  EXPECT_EQ(ValueNames(*hive_, u"software\\NOVRA\\élève"), std::vector<Text>{u"Créé"});
  EXPECT_EQ(GetRaw(*hive_, u"Software\\NoVra\\Élève", u"créé")->data, (Bytes{1, 0, 0, 0}));
  Key(u"SOFTWARE\\NOVRA\\other");
  EXPECT_EQ(SubKeys(Key(u"software")), std::vector<Text>{u"NoVra"});
}

// Bytes that differ from one offset to the next, so that a piece read from the wrong place shows.
Bytes Pattern(std::size_t size) {
  Bytes bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 251);
  return bytes;
}

TEST_F(Hive, ValuesKeepTypeAndBytes) {
  const RegKey key = Key(u"V");
  const struct Case {
    TextView name;
    std::uint32_t type;
    Bytes data;
  } cases[] = {
      {u"", RegType::Sz, BytesFromText(u"default")},
      {u"odd", RegType::Sz, {'a', 0, 'b'}},  // no terminator, odd length: kept as given
      {u"dword", RegType::Dword, {0x78, 0x56, 0x34, 0x12}},
      {u"empty", RegType::Binary, {}},
      {u"odd type", 0x12345678u, {1, 2, 3}},
      {u"big", RegType::Binary, Pattern(200000)},
      // Either side of the size from which a value is read by blob I/O.
      {u"64 KiB", RegType::Sz, Pattern(65536)},
      {u"64 KiB + 1", RegType::Sz, Pattern(65537)},
  };
  for (const Case& c : cases) ASSERT_EQ(Set(key, c.name, c.data, c.type), ok);
  for (const Case& c : cases) {
    SCOPED_TRACE(ToUtf8(c.name));
    const auto raw = GetRaw(*hive_, u"V", Text(c.name));
    ASSERT_TRUE(raw.has_value());
    EXPECT_EQ(raw->type, c.type);
    EXPECT_EQ(raw->data, c.data);
    if (c.data.empty()) continue;
    Bytes small(c.data.size() - 1);
    auto size = static_cast<std::uint32_t>(small.size());
    EXPECT_EQ(hive_->QueryValue(key, c.name, nullptr, small.data(), &size), RegError::MoreData);
    EXPECT_EQ(size, c.data.size());
  }
  std::uint8_t buffer[4];
  EXPECT_EQ(hive_->QueryValue(key, u"dword", nullptr, buffer, nullptr), RegError::InvalidParameter);
  EXPECT_EQ(hive_->QueryValue(key, u"missing", nullptr, nullptr, nullptr), RegError::FileNotFound);
  EXPECT_EQ(hive_->DeleteValue(key, u""), ok);
  EXPECT_EQ(hive_->QueryValue(key, u"", nullptr, nullptr, nullptr), RegError::FileNotFound);
  EXPECT_EQ(hive_->DeleteValue(key, u""), RegError::FileNotFound);
  EXPECT_EQ(hive_->SetValue(key, u"x", RegType::Binary, nullptr, 3), RegError::NoAccess);
}

// Enumeration gives each value's bytes whole on either side of the size from which the hive
// reads a value from its pages, whether it steps on from the last index or starts afresh.
TEST_F(Hive, EnumerationGivesLargeValuesWhole) {
  const RegKey key = Key(u"L");
  std::vector<Bytes> written;
  for (const std::size_t size : {std::size_t{65535}, std::size_t{65536}, std::size_t{65537}, std::size_t{3} << 20}) {
    Bytes data(size);
    for (std::size_t i = 0; i < size; ++i) data[i] = static_cast<std::uint8_t>(i * 31 + size);
    ASSERT_EQ(Set(key, u"v" + DecimalText(static_cast<std::int64_t>(size)), data), ok);
    written.push_back(std::move(data));
  }
  Text name;
  std::uint32_t type = 0;
  Bytes data;
  for (const std::uint32_t index : {0u, 1u, 2u, 3u, 3u, 1u, 3u}) {
    SCOPED_TRACE(index);
    ASSERT_EQ(hive_->EnumValue(key, index, name, type, data), ok);
    EXPECT_EQ(name, u"v" + DecimalText(static_cast<std::int64_t>(written[index].size())));
    EXPECT_TRUE(data == written[index]);
  }
  EXPECT_EQ(hive_->EnumValue(key, 4, name, type, data), RegError::NoMoreItems);
}

TEST_F(Hive, EnumerationOrder) {
  const RegKey key = Key(u"E");
  for (TextView name : {u"b", u"A", u"c", u"_", u"ä"}) Key(Text(u"E\\") + Text(name));
  EXPECT_EQ(SubKeys(key), (std::vector<Text>{u"A", u"b", u"c", u"_", u"ä"}));  // by upper-cased units
  for (TextView name : {u"z", u"a", u"m", u""}) ASSERT_EQ(Set(key, name, {}), ok);
  ASSERT_EQ(Set(key, u"A", {0}), ok);  // rewriting keeps the place
  ASSERT_EQ(hive_->DeleteValue(key, u"z"), ok);
  ASSERT_EQ(Set(key, u"Z", {}), ok);  // a new value goes last
  EXPECT_EQ(ValueNames(*hive_, u"E"), (std::vector<Text>{u"a", u"m", u"", u"Z"}));
  Text name;
  std::uint32_t type = 0;
  Bytes data;
  EXPECT_EQ(hive_->EnumValue(key, 4, name, type, data), RegError::NoMoreItems);
  EXPECT_EQ(hive_->EnumKey(key, 5, name), RegError::NoMoreItems);

  // After a change, by this connection or another, an index means the same as on a fresh look.
  ASSERT_EQ(hive_->EnumValue(key, 0, name, type, data), ok);
  ASSERT_EQ(hive_->EnumValue(key, 1, name, type, data), ok);
  ASSERT_EQ(hive_->DeleteValue(key, u"a"), ok);
  EXPECT_EQ(hive_->EnumValue(key, 2, name, type, data), ok);
  EXPECT_EQ(name, u"Z");
  ASSERT_EQ(hive_->EnumKey(key, 0, name), ok);
  ASSERT_EQ(SqliteHive::Open(folder_.File("hive.db"))->DeleteTree(kHklm, u"E\\A"), ok);
  EXPECT_EQ(hive_->EnumKey(key, 1, name), ok);
  EXPECT_EQ(name, u"c");
}

TEST_F(Hive, AccessMasks) {
  Key(u"M\\Existing");
  ASSERT_EQ(Set(Key(u"M"), u"v", {}), ok);
  const struct Case {
    std::uint32_t access;
    RegStatus query, set, enumKey, enumValue, createNew, clear;
  } cases[] = {
      {RegAccess::Read, ok, denied, ok, ok, denied, denied},
      {RegAccess::Write, denied, ok, denied, denied, ok, denied},
      {0, denied, denied, denied, denied, denied, denied},
      {RegAccess::AllAccess, ok, ok, ok, ok, ok, ok},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.access);
    const RegKey key = Key(u"M", c.access);
    Text name;
    std::uint32_t type = 0;
    Bytes data;
    RegKey sub = 0;
    EXPECT_EQ(hive_->QueryValue(key, u"v", nullptr, nullptr, nullptr), c.query);
    EXPECT_EQ(Set(key, u"v", {}), c.set);
    EXPECT_EQ(hive_->DeleteValue(key, u"missing"), c.set == ok ? RegError::FileNotFound : denied);
    EXPECT_EQ(hive_->EnumKey(key, 0, name), c.enumKey);
    EXPECT_EQ(hive_->EnumValue(key, 0, name, type, data), c.enumValue);
    EXPECT_EQ(hive_->CreateKey(key, u"New", RegAccess::Read, sub), c.createNew);
    hive_->CloseKey(sub);
    EXPECT_EQ(hive_->CreateKey(key, u"Existing", RegAccess::Read, sub), ok);  // opening needs no right
    hive_->CloseKey(sub);
    EXPECT_EQ(hive_->DeleteTree(key, u"New"), c.createNew == ok ? ok : RegError::FileNotFound);
    EXPECT_EQ(hive_->DeleteTree(Key(u"M\\Existing", c.access), u""), c.clear);
  }
}

TEST_F(Hive, DeleteTreeAndDeletedKeyHandles) {
  Text deep = u"D\\Tree";
  for (int level = 0; level < 60; ++level) deep += u"\\L" + DecimalText(level);
  const RegKey leaf = Key(deep);
  const RegKey tree = Key(u"D\\Tree");
  ASSERT_EQ(Set(leaf, u"v", {1}), ok);
  ASSERT_EQ(Set(tree, u"v", {1}), ok);
  EXPECT_EQ(hive_->DeleteTree(tree, u""), ok);  // empties the key, keeps it
  EXPECT_TRUE(SubKeys(tree).empty());
  EXPECT_TRUE(ValueNames(*hive_, u"D\\Tree").empty());
  ASSERT_EQ(Set(tree, u"v", {1}), ok);
  EXPECT_EQ(hive_->DeleteTree(kHklm, u"D\\Tree"), ok);
  EXPECT_EQ(hive_->DeleteTree(kHklm, u"D\\Tree"), RegError::FileNotFound);

  Text name;
  std::uint32_t type = 0;
  Bytes data;
  RegKey sub = 0;
  for (const RegKey gone : {tree, leaf})
    EXPECT_EQ(hive_->QueryValue(gone, u"v", nullptr, nullptr, nullptr), RegError::KeyDeleted);
  EXPECT_EQ(Set(tree, u"v", {}), RegError::KeyDeleted);
  EXPECT_EQ(hive_->DeleteValue(tree, u"v"), RegError::KeyDeleted);
  EXPECT_EQ(hive_->EnumKey(tree, 0, name), RegError::KeyDeleted);
  EXPECT_EQ(hive_->EnumValue(tree, 0, name, type, data), RegError::KeyDeleted);
  EXPECT_EQ(hive_->OpenKey(tree, u"", RegAccess::Read, sub), RegError::KeyDeleted);
  EXPECT_EQ(hive_->CreateKey(tree, u"X", RegAccess::Read, sub), RegError::KeyDeleted);
  EXPECT_EQ(hive_->DeleteTree(tree, u""), RegError::KeyDeleted);
  // A key made again under the same name is another key, with nothing of the old one.
  const RegKey again = Key(u"D\\Tree");
  EXPECT_EQ(Set(tree, u"v", {}), RegError::KeyDeleted);
  EXPECT_TRUE(SubKeys(again).empty());
  EXPECT_TRUE(ValueNames(*hive_, u"D\\Tree").empty());
}

TEST_F(Hive, BatchesLandWholeOrNotAtAll) {
  const auto other = SqliteHive::Open(folder_.File("hive.db"));
  const struct Case {
    const char* steps;  // b begin, c commit, a abandon; the write follows the first step
    bool lands;
  } cases[] = {{"bc", true}, {"ba", false}, {"bbcc", true}, {"bbac", false}, {"bbca", false}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.steps);
    const Text path = u"B\\" + FromUtf8(c.steps);
    for (const char* step = c.steps; *step != '\0'; ++step) {
      if (*step == 'b') hive_->BeginBatch();
      if (*step == 'c') hive_->CommitBatch();
      if (*step == 'a') hive_->AbandonBatch();
      if (step != c.steps) continue;
      ASSERT_EQ(Set(Key(path), u"v", {7}), ok);
      keys_.clear();
      EXPECT_FALSE(GetRaw(*other, path, u"v").has_value());  // not before the end
    }
    EXPECT_EQ(GetRaw(*other, path, u"v").has_value(), c.lands);
  }
  // Keys made in an abandoned batch never were, even once their ids are given out again.
  hive_->BeginBatch();
  const RegKey undone = Key(u"U\\One\\Two");
  const RegKey reopened = Key(u"u\\one\\two");
  hive_->AbandonBatch();
  Key(u"V\\X\\Y");
  for (const RegKey key : {undone, reopened}) EXPECT_EQ(Set(key, u"v", {}), RegError::KeyDeleted);
  RegKey key = 0;
  EXPECT_EQ(hive_->OpenKey(kHklm, u"U\\One\\Two", RegAccess::Read, key), RegError::FileNotFound);

  keys_.clear();
  hive_.reset();  // what landed is in the file
  hive_ = SqliteHive::Open(folder_.File("hive.db"));
  EXPECT_EQ(GetRaw(*hive_, u"b\\BBCC", u"V")->data, Bytes{7});
}

TEST_F(Hive, PathsRememberedInABatchFollowDeletions) {
  const auto other = SqliteHive::Open(folder_.File("hive.db"));
  const auto opens = [&](TextView path) {
    UniqueRegKey key;
    return OpenUniqueKey(*hive_, kHklm, path, RegAccess::Read, key) == ok;
  };
  // Our own deletion inside the batch, of the key or of one above it.
  for (const TextView deleted : {u"P\\Q\\R", u"P\\Q"}) {
    SCOPED_TRACE(ToUtf8(deleted));
    hive_->BeginBatch();
    ASSERT_EQ(Set(Key(u"P\\Q\\R"), u"v", {1}), ok);
    keys_.clear();
    ASSERT_TRUE(opens(u"P\\Q\\R"));
    ASSERT_EQ(hive_->DeleteTree(kHklm, deleted), ok);
    EXPECT_FALSE(opens(u"P\\Q\\R"));
    EXPECT_TRUE(ValueNames(*hive_, u"P\\Q\\R").empty()) << "a new key, not the old one";
    hive_->CommitBatch();
  }
  // Another process's, between two batches.
  hive_->BeginBatch();
  Key(u"P\\Q\\R");
  keys_.clear();
  ASSERT_TRUE(opens(u"P\\Q\\R"));
  hive_->CommitBatch();
  ASSERT_EQ(other->DeleteTree(kHklm, u"P"), ok);
  hive_->BeginBatch();
  EXPECT_FALSE(opens(u"P\\Q\\R"));
  hive_->CommitBatch();
}

TEST_F(Hive, ReadingSeesOneStateAndGivesWayToWrites) {
  const auto other = SqliteHive::Open(folder_.File("hive.db"));
  const RegKey key = Key(u"R");
  ASSERT_EQ(Set(key, u"v", {1}), ok);
  hive_->BeginReading();
  hive_->BeginReading();  // nested
  EXPECT_EQ(GetRaw(*hive_, u"R", u"v")->data, Bytes{1});
  PutRaw(*other, u"R", u"v", RegType::Binary, {2});  // another process writes meanwhile
  EXPECT_EQ(GetRaw(*hive_, u"R", u"v")->data, Bytes{1}) << "one state for the whole run of reads";
  hive_->EndReading();
  EXPECT_EQ(GetRaw(*hive_, u"R", u"v")->data, Bytes{1});
  hive_->EndReading();
  EXPECT_EQ(GetRaw(*hive_, u"R", u"v")->data, Bytes{2});

  // A write batch started inside a run of reads still lands whole.
  hive_->BeginReading();
  EXPECT_EQ(GetRaw(*hive_, u"R", u"v")->data, Bytes{2});
  hive_->BeginBatch();
  EXPECT_EQ(Set(key, u"v", {3}), ok);
  hive_->CommitBatch();
  hive_->EndReading();
  EXPECT_EQ(GetRaw(*other, u"R", u"v")->data, Bytes{3});
}

// Values of a mebibyte and more are written in place, in pieces: the same answers, and a
// batch still takes them back whole.
TEST_F(Hive, LargeValuesReadBackExactlyAndRollBackWithTheirBatch) {
  Bytes large(3 * 1024 * 1024 + 7);
  for (std::size_t i = 0; i < large.size(); ++i) large[i] = static_cast<std::uint8_t>(i * 31);
  const RegKey key = Key(u"Large");
  EXPECT_EQ(Set(key, u"v", Bytes(10, 1)), ok);
  EXPECT_EQ(Set(key, u"V", large), ok);  // over the small one, keeping its place
  EXPECT_EQ(GetRaw(*hive_, u"Large", u"v")->data, large);
  hive_->BeginBatch();
  EXPECT_EQ(Set(key, u"w", large), ok);
  hive_->AbandonBatch();
  EXPECT_FALSE(GetRaw(*hive_, u"Large", u"w").has_value());
  EXPECT_EQ(ValueNames(*hive_, u"Large"), std::vector<Text>{u"v"});
}

// A value given in parts is the parts joined, below and above the size from which the hive
// writes them one after the other, with parts that end inside the hive's pieces and past them.
TEST_F(Hive, ValuesInPartsAreThePartsJoined) {
  const RegKey key = Key(u"Parts");
  constexpr std::size_t kMiB = 1 << 20;
  for (const std::size_t first : {std::size_t{0}, std::size_t{10}, kMiB - 3, kMiB + 5, 2 * kMiB + 1}) {
    SCOPED_TRACE(first);
    Bytes head(first), tail{7, 0, 0};
    for (std::size_t i = 0; i < head.size(); ++i) head[i] = static_cast<std::uint8_t>(i * 13 + 1);
    const std::span<const std::uint8_t> parts[] = {head, {}, tail};
    ASSERT_EQ(hive_->SetValueParts(key, u"v", RegType::Sz, parts), ok);
    Bytes joined = head;
    joined.insert(joined.end(), tail.begin(), tail.end());
    const auto stored = GetRaw(*hive_, u"Parts", u"v");
    ASSERT_TRUE(stored.has_value());
    EXPECT_EQ(stored->type, RegType::Sz);
    EXPECT_EQ(stored->data, joined);
  }
  const Bytes large(2 * kMiB);
  const std::span<const std::uint8_t> parts[] = {large};
  EXPECT_EQ(hive_->SetValueParts(Key(u"Parts", RegAccess::QueryValue), u"v", RegType::Sz, parts), denied);
  EXPECT_EQ(hive_->SetValueParts(key, Text(RegLimit::ValueNameLength + 1, u'n'), RegType::Sz, parts),
            RegError::InvalidParameter);
}

// Collects what ReadValue gives, and the size of every piece.
class CollectingSink final : public ValueSink {
 public:
  void Begin(std::uint32_t type, std::uint32_t size) override {
    type_ = type;
    size_ = size;
  }
  void Append(const std::uint8_t* data, std::uint32_t size) override {
    bytes_.insert(bytes_.end(), data, data + size);
    pieces_.push_back(size);
  }
  std::uint32_t type_ = 0, size_ = 0;
  Bytes bytes_;
  std::vector<std::uint32_t> pieces_;
};

// Read in pieces, a value is what QueryValue gives, around the sizes where the hive changes
// how it reads (in the row, from its pages, one piece after another), and as the stepping
// reader of every registry gives it.
TEST_F(Hive, ReadValueInPiecesGivesTheWholeValue) {
  const RegKey key = Key(u"Pieces");
  for (const std::uint32_t size : {0u, 5u, 65536u, 65537u, 262144u, 262145u, 3u * 262144u + 7u}) {
    SCOPED_TRACE(size);
    Bytes data(size);
    for (std::uint32_t i = 0; i < size; ++i) data[i] = static_cast<std::uint8_t>(i * 7 + 3);
    ASSERT_EQ(Set(key, u"v", data), ok);
    CollectingSink pieced, whole;
    ASSERT_EQ(hive_->ReadValue(key, u"V", pieced), ok);
    ASSERT_EQ(hive_->Registry::ReadValue(key, u"v", whole), ok);
    for (const CollectingSink* sink : {&pieced, &whole}) {
      EXPECT_EQ(sink->type_, RegType::Binary);
      EXPECT_EQ(sink->size_, size);
      EXPECT_EQ(sink->bytes_, data);
      for (std::size_t i = 0; i + 1 < sink->pieces_.size(); ++i) EXPECT_EQ(sink->pieces_[i] % 2, 0u);
    }
  }
  CollectingSink none;
  EXPECT_EQ(hive_->ReadValue(key, u"missing", none), RegError::FileNotFound);
  EXPECT_EQ(hive_->ReadValue(Key(u"Pieces", RegAccess::SetValue), u"v", none), denied);
}

// Collects what a value is written out as, in the pieces it comes in.
class CollectedUtf8 final : public Utf8Output {
 public:
  void Write(std::string_view bytes) override {
    bytes_ += bytes;
    ++writes_;
  }
  std::string bytes_;
  int writes_ = 0;
};

bool IsSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

// Writes "!" for a surrogate whose pair is not in the same call: a pair cut between two calls
// then differs from the text encoded whole.
void MarkLoneSurrogates(TextView units, std::string& out) {
  for (std::size_t i = 0; i < units.size(); ++i) {
    const bool pair = units[i] < 0xDC00 && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF;
    if (IsSurrogate(units[i]) && !pair) {
      out += '!';
    } else {
      AppendUtf8(units.substr(i, pair ? 2 : 1), out);
      i += pair ? 1 : 0;
    }
  }
}

// A stored variable reads as its text without the terminator (an odd last byte is no unit),
// a REG_DWORD as its number, whatever its size; written out as UTF-8 while it is read, it is
// the same, surrogate pairs across the hive's pieces included.
TEST_F(Hive, StoredValuesReadAsTextOrNumber) {
  const RegKey key = Key(u"Stored");
  const Text big(300000, u'\u00e9');
  Text huge(9u << 19, u'x');  // 9 MiB: its pages made present beside the read
  huge.back() = u'y';
  constexpr std::size_t kPieceUnits = 131072;  // the hive's pieces, in units
  Text pairs(2 * kPieceUnits + 8, u'p');
  pairs.replace(kPieceUnits - 1, 2, u"\U0001F600");      // across the first pieces
  pairs.replace(2 * kPieceUnits - 2, 2, u"\U0001F601");  // ending where a piece ends
  Text lone = pairs;
  lone[kPieceUnits] = u'q';  // a high surrogate alone at a piece's end
  lone.back() = char16_t(0xD800);  // and before the terminator
  const struct Case {
    Bytes data;
    std::uint32_t type;
    Variant expected;
  } cases[] = {
      {BytesFromText(u"abc"), RegType::Sz, Variant::FromText(u"abc")},
      {BytesFromText(big), RegType::Sz, Variant::FromText(big)},
      {BytesFromText(huge), RegType::ExpandSz, Variant::FromText(huge)},
      {Bytes{'a', 0, 'b', 0, 'c'}, RegType::Sz, Variant::FromText(u"ab")},
      {FirstBytes(BytesFromText(big), big.size() * 2 + 1), RegType::Sz, Variant::FromText(big)},  // read in pieces
      {Bytes{}, RegType::Sz, Variant::FromText(u"")},
      {Bytes{0xFE, 0xFF, 0xFF, 0xFF}, RegType::Dword, Variant::FromLong(-2)},
      {Bytes{1, 0}, RegType::Dword, Variant::FromText(Text(1, u'\u0001'))},
      {BytesFromText(pairs), RegType::Sz, Variant::FromText(pairs)},
      {BytesFromText(lone), RegType::Sz, Variant::FromText(lone)},
      {FirstBytes(BytesFromText(lone), lone.size() * 2 + 1), RegType::Sz, Variant::FromText(lone)},
  };
  for (const Case& c : cases) {
    ASSERT_EQ(Set(key, u"v", c.data, c.type), ok);
    EXPECT_EQ(ReadStoredValue(*hive_, key, u"v"), c.expected) << c.data.size();
    CollectedUtf8 out;
    ASSERT_EQ(WriteStoredValueAsUtf8(*hive_, key, u"v", out), ok);
    EXPECT_TRUE(out.bytes_ == ToUtf8(ToText(c.expected))) << c.data.size();
    CollectedUtf8 marked;
    ASSERT_EQ(WriteStoredValueAsUtf8(*hive_, key, u"v", marked, &MarkLoneSurrogates), ok);
    std::string whole;
    MarkLoneSurrogates(ToText(c.expected), whole);
    EXPECT_TRUE(marked.bytes_ == whole) << c.data.size();
  }
  EXPECT_EQ(ReadStoredValue(*hive_, key, u"missing"), std::nullopt);
  CollectedUtf8 none;
  EXPECT_EQ(WriteStoredValueAsUtf8(*hive_, key, u"missing", none), RegError::FileNotFound);
  EXPECT_EQ(none.writes_, 0);
}

// A text read through a scanner is cut as the same text scanned whole: separators across the
// pieces the hive reads in, a separator like the terminator, a number that is no text.
TEST_F(Hive, StoredTextsCutAsTheyAreRead) {
  const RegKey key = Key(u"Scanned");
  constexpr std::size_t kPieceUnits = 131072;  // the hive's pieces, in units
  Text straddling(3 * kPieceUnits + 5, u'x');
  for (const std::size_t at : {kPieceUnits - 1, 2 * kPieceUnits - 2, 2 * kPieceUnits, 3 * kPieceUnits + 3})
    straddling.replace(at, 2, u"\r\n");
  const struct Case {
    Bytes data;
    std::uint32_t type;
    Text separator;
    std::size_t reach;
    bool scanned;  // whether the cut comes from the scan made during the read
  } cases[] = {  // texts too long to live inside their string: read, they are not copied
      {BytesFromText(straddling), RegType::Sz, u"\r\n", kEveryPiece, true},
      {BytesFromText(straddling), RegType::Sz, u"\r\n", 2, true},
      {BytesFromText(Text(u"alpha\0beta\0gamma\0", 17)), RegType::Sz, Text(1, u'\0'), kEveryPiece, true},
      {BytesFromText(u"alpha;beta;gamma;delta"), RegType::ExpandSz, u";", 1, true},
      {FirstBytes(BytesFromText(u"alpha;beta;gamma;delta;"), 45), RegType::Sz, u";", kEveryPiece, true},
      {Bytes{7, 0, 0, 0}, RegType::Dword, u";", kEveryPiece, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.data.size());
    ASSERT_EQ(Set(key, u"v", c.data, c.type), ok);
    PieceScanner scanner(c.separator, c.reach);
    const std::optional<Variant> value = ReadStoredValue(*hive_, key, u"v", &scanner);
    ASSERT_TRUE(value.has_value());
    const TextView text = value->IsText() ? TextView(value->TextValue()) : TextView(u"7");
    EXPECT_EQ(scanner.SawWhole(text), c.scanned);
    const PieceCut read(text, std::move(scanner));
    const PieceCut whole(text, c.separator, c.reach);
    ASSERT_EQ(read.LastIndex(), whole.LastIndex());
    for (std::size_t i = 0; i <= read.LastIndex(); ++i) {
      if (i < c.reach || read.LastIndex() - i < c.reach) {
        EXPECT_EQ(read.Piece(i), whole.Piece(i)) << i;
      }
    }
  }
}

// A long text read in part: cut as it is read, only the stretches chosen are filled in, and
// the value is left to a whole read when it is no long text.
TEST_F(Hive, LongTextsAreReadInTheStretchesChosen) {
  const RegKey key = Key(u"Partly");
  constexpr std::size_t kPieceUnits = 131072;  // the hive's pieces, in units
  Text lines(5 * kPieceUnits + 3, u'x');
  for (const std::size_t at : {std::size_t{7}, kPieceUnits - 1, 2 * kPieceUnits, 4 * kPieceUnits + 9})
    lines.replace(at, 2, u"\r\n");
  Text nulls(5 * kPieceUnits, u'n');
  nulls[kPieceUnits] = nulls[nulls.size() - 1] = u'\0';  // the last one is kept: a terminator follows
  const struct Case {
    Bytes data;
    std::uint32_t type;
    Text text;  // as a whole read gives it; empty: not read in part
    Text separator;
    std::size_t reach;
  } cases[] = {
      {BytesFromText(lines), RegType::Sz, lines, u"\r\n", kEveryPiece},
      {BytesFromText(lines), RegType::ExpandSz, lines, u"\r\n", 1},
      {FirstBytes(BytesFromText(lines), lines.size() * 2 - 1), RegType::Sz, lines.substr(0, lines.size() - 1), u"\r\n",
       kEveryPiece},  // an odd size: the last byte is no unit
      {BytesFromText(nulls), RegType::Sz, nulls, Text(1, u'\0'), kEveryPiece},
      {BytesFromText(u"short;text"), RegType::Sz, u"", u";", kEveryPiece},
      {Bytes{7, 0, 0, 0}, RegType::Dword, u"", u";", kEveryPiece},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.data.size());
    ASSERT_EQ(Set(key, u"v", c.data, c.type), ok);
    const PieceCut whole(c.text, c.separator, c.reach);
    std::vector<UnitSpan> chosen;
    PieceScanner scanner(c.separator, c.reach);
    const std::optional<PartlyReadText> read =
        ReadStoredTextPartly(*hive_, key, u"v", scanner, [&](TextView text, PieceScanner& scanned) {
          const PieceCut cut(text, std::move(scanned));
          EXPECT_EQ(cut.LastIndex(), whole.LastIndex());
          for (std::size_t i = 0; i <= std::min<std::size_t>(cut.LastIndex(), 2); ++i) {
            // A cut keeps the ends of the pieces within its reach of either end, no others.
            if (i >= c.reach && cut.LastIndex() - i >= c.reach) continue;
            const TextView piece = cut.Piece(i);
            const auto at = static_cast<std::size_t>(piece.data() - text.data());
            EXPECT_EQ(at, static_cast<std::size_t>(whole.Piece(i).data() - whole.Whole().data()));
            chosen.push_back({at, at + piece.size()});
          }
          chosen.push_back({text.size() - 5, text.size()});
          chosen.push_back({kPieceUnits - 3, kPieceUnits + 3});  // across two pieces the hive reads
          return chosen;
        });
    ASSERT_EQ(read.has_value(), !c.text.empty());
    if (!read) continue;
    ASSERT_EQ(read->View().size(), c.text.size());
    for (const UnitSpan span : chosen) {
      EXPECT_EQ(read->View().substr(span.begin, span.end - span.begin),
                TextView(c.text).substr(span.begin, span.end - span.begin));
    }
  }
}

// A scanner told how many separators are enough stops the reading at the hive's next piece.
TEST_F(Hive, ALongTextIsReadNoFurtherThanItsScannerNeeds) {
  const RegKey key = Key(u"Prefix");
  constexpr std::size_t kPieceUnits = 131072;  // the hive's pieces, in units
  Text text;
  for (int line = 0; text.size() < 5 * kPieceUnits; ++line) text += u"line " + DecimalText(line) + u";";
  text[kPieceUnits - 1] = u'\0';  // the last unit of the first piece read: text, not a terminator
  ASSERT_EQ(Set(key, u"v", BytesFromText(text), RegType::Sz), ok);
  const PieceCut whole(text, u";");
  const struct Case {
    std::size_t enough;
    std::size_t units;  // read
  } cases[] = {{1, kPieceUnits}, {whole.LastIndex() / 2, 3 * kPieceUnits}, {whole.LastIndex() + 1, text.size()}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.enough);
    PieceScanner scanner(u";", kEveryPiece);
    scanner.NeedOnly(c.enough, 0);
    std::size_t lastIndex = 0;
    UnitSpan last;  // of piece enough - 1, the last one wanted
    const std::optional<PartlyReadText> read =
        ReadStoredTextPartly(*hive_, key, u"v", scanner, [&](TextView part, PieceScanner& scanned) {
          const PieceCut cut(part, std::move(scanned));
          lastIndex = cut.LastIndex();
          const TextView piece = cut.Piece(c.enough - 1);
          last.begin = static_cast<std::size_t>(piece.data() - part.data());
          last.end = last.begin + piece.size();
          return std::vector<UnitSpan>{{0, 64}, last};
        });
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->View().size(), c.units);
    EXPECT_GE(lastIndex, std::min(c.enough, whole.LastIndex()));
    EXPECT_EQ(read->View().substr(0, 64), TextView(text).substr(0, 64));
    EXPECT_EQ(read->View().substr(last.begin, last.end - last.begin), whole.Piece(c.enough - 1));
  }
}

// The ranges of a value, read alone by the hive or out of the whole value by any registry.
TEST_F(Hive, ValueRangesAreReadInPlace) {
  const RegKey key = Key(u"Ranges");
  Bytes large(3u << 20);
  for (std::size_t i = 0; i < large.size(); ++i) large[i] = static_cast<std::uint8_t>(i * 7 + i / 251);
  const Bytes small = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  const ByteRange ranges[] = {{0, 3}, {5, 5}, {6, 9}};
  const ByteRange largeRanges[] = {{0, 3}, {65530, 65540}, {1u << 20, (1u << 20) + 70000}, {(3u << 20) - 2, 3u << 20}};
  const ByteRange beyond[] = {{0, 10}};
  const struct Case {
    const Bytes* value;
    std::span<const ByteRange> ranges;
    std::uint32_t size;
    RegStatus status;
  } cases[] = {
      {&small, ranges, 9, ok},
      {&large, largeRanges, 3u << 20, ok},
      {&small, beyond, 9, RegError::InvalidParameter},
      {&small, ranges, 10, RegError::BadDatabase},
  };
  for (const bool alone : {true, false}) {
    for (const Case& c : cases) {
      SCOPED_TRACE(testing::Message() << "alone " << alone << ", size " << c.value->size());
      ASSERT_EQ(Set(key, u"v", *c.value), ok);
      Bytes data(c.size, 0xEE);
      const RegStatus status = alone ? hive_->ReadValueRanges(key, u"v", c.size, c.ranges, data.data())
                                     : hive_->Registry::ReadValueRanges(key, u"v", c.size, c.ranges, data.data());
      ASSERT_EQ(status, c.status);
      if (status != ok) continue;
      Bytes expected(c.size, 0xEE);
      for (const ByteRange range : c.ranges)
        std::copy(c.value->begin() + range.begin, c.value->begin() + range.end, expected.begin() + range.begin);
      EXPECT_EQ(data, expected);
    }
  }
}

}  // namespace
}  // namespace nv::test
