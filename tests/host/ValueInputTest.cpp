#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>

#include "common/Utf.h"
#include "host/nvhost/ValueInput.h"

namespace nv {
namespace {

// A file read in blocks of any size gives the text the whole file gives, and a bad byte is
// named at its offset in the file, wherever the blocks cut the sequences around it.
TEST(ValueInput, BlocksOfAnySizeReadAsTheWholeFile) {
  std::string mixed;
  for (int i = 0; i < 40; ++i) mixed += "line é 日本 \xF0\x9F\x98\x80\r\n";
  const std::string inputs[] = {
      "", "abc", "\xC3\xA9", "\xE6\x97\xA5\xE6\x9C\xAC", mixed,
      "x\xED\xA0\x80y",                 // a surrogate's own form, as the registry allows
      "ab\xFF" "cd", "abc\xE6\x97",     // a bad byte; a sequence cut by the end of the file
      "\xC0\x80", "\xF0\x9F\x98" "a",   // overlong; a sequence cut short inside the file
      mixed + "\xFF" + mixed,
  };
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("nvextch-input-" + std::to_string(std::random_device{}()) + ".txt");
  for (const std::string& input : inputs) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << input;
    const std::size_t valid = Utf8ValidLength(input);
    for (const std::size_t block : {1, 2, 3, 4, 5, 7, 64, 1 << 20}) {
      SCOPED_TRACE(testing::Message() << "input of " << input.size() << " bytes, blocks of " << block);
      try {
        const Text text = ReadUtf8Input(path.string(), SIZE_MAX, block);
        EXPECT_EQ(valid, input.size());
        EXPECT_EQ(text, FromUtf8(input));
      } catch (const std::runtime_error& e) {
        EXPECT_NE(valid, input.size());
        EXPECT_EQ(std::string(e.what()), path.string() + " is not UTF-8: bad byte at offset " + std::to_string(valid));
      }
    }
  }
  std::filesystem::remove(path);
  EXPECT_THROW(ReadUtf8Input(path.string()), std::runtime_error);
}

// A text longer than what will hold it is refused, counted in UTF-16 units, however it is
// read; one exactly as long is read whole.
TEST(ValueInput, TextsLongerThanTheMostAllowedAreRefused) {
  const struct Case {
    std::string input;
    std::size_t maxUnits;
    bool fits;
  } cases[] = {
      {"abcdef", 6, true},          {"abcdef", 5, false},
      {"\xC3\xA9\xC3\xA9", 2, true}, {"\xE6\x97\xA5\xE6\x9C\xAC", 1, false},  // units, not bytes
      {"\xF0\x9F\x98\x80", 1, false}, {"\xF0\x9F\x98\x80", 2, true},           // a pair is two units
      {std::string(30, 'x'), 9, false},  // a third of the bytes already too many: refused unread
  };
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("nvextch-long-" + std::to_string(std::random_device{}()) + ".txt");
  for (const Case& c : cases) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << c.input;
    for (const std::size_t block : {1, 3, 1 << 20}) {
      SCOPED_TRACE(testing::Message() << c.input.size() << " bytes, at most " << c.maxUnits << ", blocks of " << block);
      try {
        EXPECT_EQ(ReadUtf8Input(path.string(), c.maxUnits, block), FromUtf8(c.input));
        EXPECT_TRUE(c.fits);
      } catch (const std::runtime_error& e) {
        EXPECT_FALSE(c.fits);
        EXPECT_EQ(std::string(e.what()).find(path.string() + " is too long: a value holds at most " +
                                             std::to_string(c.maxUnits) + " UTF-16 units"),
                  0u)
            << e.what();
      }
    }
  }
  std::filesystem::remove(path);
}

// A file read again gives only the bytes the first reading counted, though it has grown:
// the extent says how many bytes and units were read, and a sequence cut by the limit is bad.
TEST(ValueInput, ReadingAgainStopsWhereTheFirstReadingEnded) {
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("nvextch-again-" + std::to_string(std::random_device{}()) + ".txt");
  std::ofstream(path, std::ios::binary | std::ios::trunc) << "abc\xC3\xA9" "def\xF0\x9F\x98\x80";
  const struct Case {
    std::uint64_t maxBytes;
    const char16_t* text;  // nothing: the bytes read end inside a sequence
    std::uint64_t bytes;
  } cases[] = {{0, u"", 0}, {3, u"abc", 3}, {4, nullptr, 0}, {5, u"abc\u00e9", 5}, {9, nullptr, 0},
               {12, u"abc\u00e9def\U0001F600", 12}, {1000, u"abc\u00e9def\U0001F600", 12}};
  for (const Case& c : cases) {
    for (const std::size_t block : {1, 2, 1 << 20}) {
      SCOPED_TRACE(testing::Message() << "at most " << c.maxBytes << " bytes, blocks of " << block);
      Text text;
      try {
        const Utf8Extent extent = ReadUtf8Blocks(
            path.string(), [&](std::string_view utf8) { AppendFromUtf8(utf8, text); }, SIZE_MAX, c.maxBytes, block);
        ASSERT_NE(c.text, nullptr);
        EXPECT_EQ(text, c.text);
        EXPECT_EQ(extent.bytes, c.bytes);
        EXPECT_EQ(extent.units, text.size());
      } catch (const std::runtime_error& e) {
        EXPECT_EQ(c.text, nullptr) << e.what();
      }
    }
  }
  std::filesystem::remove(path);
}

}  // namespace
}  // namespace nv
