#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

#include "common/Conversions.h"
#include "common/Error.h"
#ifdef _WIN32
#include "common/SystemLocale.h"
#include "common/Utf.h"
#include "platform/win32/Win32Registry.h"
#include "store/RegistryKey.h"
#endif

namespace nv {
namespace {

struct IntegerCase {
  const char16_t* text;
  std::optional<int> expected;  // nothing: the error below
  std::int32_t error;
};

TEST(Conversions, ToIntegerFromText) {
  const IntegerCase cases[] = {
      {u"12", 12, 0},
      {u" 12 ", 12, 0},
      {u"-7", -7, 0},
      {u"+7", 7, 0},
      {u"2.5", 2, 0},  // halves go to the even neighbour
      {u"3.5", 4, 0},
      {u"-2.5", -2, 0},
      {u"0.5", 0, 0},
      {u"1.5", 2, 0},
      {u"32767", 32767, 0},
      {u"32767.4", 32767, 0},
      {u"-32768", -32768, 0},
      {u"-32768.5", -32768, 0},
      {u"32767.5", std::nullopt, ErrorNumber::Overflow},
      {u"32768", std::nullopt, ErrorNumber::Overflow},
      {u"-32769", std::nullopt, ErrorNumber::Overflow},
      {u"1e3", 1000, 0},
      {u"1D2", 100, 0},
      {u"1e", std::nullopt, ErrorNumber::TypeMismatch},
      {u"&H1F", 31, 0},
      {u"&hff", 255, 0},
      {u"&HFFFF", -1, 0},
      {u"&O17", 15, 0},
      {u"&H", std::nullopt, ErrorNumber::TypeMismatch},
      {u"&HG", std::nullopt, ErrorNumber::TypeMismatch},
      {u"", std::nullopt, ErrorNumber::TypeMismatch},
      {u"   ", std::nullopt, ErrorNumber::TypeMismatch},
      {u"abc", std::nullopt, ErrorNumber::TypeMismatch},
      {u"12abc", std::nullopt, ErrorNumber::TypeMismatch},
      {u".5", 0, 0},
      {u"5.", 5, 0},
      {u".", std::nullopt, ErrorNumber::TypeMismatch},
      {u"1 2", std::nullopt, ErrorNumber::TypeMismatch},
      {u"+", std::nullopt, ErrorNumber::TypeMismatch},
      {u"-", std::nullopt, ErrorNumber::TypeMismatch},
      {u"-0", 0, 0},
      {u"0032767", 32767, 0},
      {u"0000000000000000032767", 32767, 0},  // more digits than a double holds exactly
      {u"999999999999999", std::nullopt, ErrorNumber::Overflow},
      {u"-1000000000000000", std::nullopt, ErrorNumber::Overflow},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "case " << (&c - cases));
    if (c.expected) {
      EXPECT_EQ(ToInteger(TextView(c.text)), *c.expected);
      EXPECT_TRUE(IsNumeric(TextView(c.text)));
    } else {
      try {
        ToInteger(TextView(c.text));
        ADD_FAILURE() << "no error";
      } catch (const RuntimeError& e) {
        EXPECT_EQ(e.Number(), c.error);
      }
    }
  }
}

TEST(Conversions, VariantKinds) {
  EXPECT_EQ(ToInteger(Variant()), 0);
  EXPECT_TRUE(IsNumeric(Variant()));
  EXPECT_EQ(ToInteger(Variant::FromLong(-5)), -5);
  EXPECT_THROW(ToInteger(Variant::FromLong(40000)), RuntimeError);
  EXPECT_EQ(ToLong(Variant::FromLong(40000)), 40000);
  EXPECT_EQ(ToLong(Variant::FromText(u"&HFFFFFFFF")), -1);
  EXPECT_EQ(ToLong(Variant::FromText(u"2147483647")), 2147483647);
  EXPECT_THROW(ToLong(Variant::FromText(u"2147483648")), RuntimeError);
  EXPECT_EQ(ToText(Variant::FromLong(-12)), u"-12");
  EXPECT_EQ(ToText(Variant()), u"");
  EXPECT_TRUE(Variant().IsEmptyText());
  EXPECT_TRUE(Variant::FromText(u"").IsEmptyText());
  EXPECT_FALSE(Variant::FromLong(0).IsEmptyText());
}

TEST(Conversions, ToBoolean) {
  struct Case {
    const char16_t* text;
    int expected;  // -1: type mismatch
  } const cases[] = {
      {u"True", 1},  {u"TRUE", 1},  {u"true", 1}, {u"Vrai", 1},   {u"vRAI", 1}, {u"False", 0},
      {u"faux", 0},  {u"FAUX", 0},  {u"1", 1},    {u"-1", 1},     {u"0", 0},    {u"2.5", 1},
      {u" 12 ", 1},  {u" True ", 1}, {u"", -1},   {u"yes", -1},   {u"Vraie", -1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "case " << (&c - cases));
    if (c.expected < 0) {
      try {
        ToBoolean(TextView(c.text));
        ADD_FAILURE() << "no error";
      } catch (const RuntimeError& e) {
        EXPECT_EQ(e.Number(), ErrorNumber::TypeMismatch);
      }
    } else {
      EXPECT_EQ(ToBoolean(TextView(c.text)), c.expected == 1);
    }
  }
  EXPECT_FALSE(ToBoolean(Variant()));
  EXPECT_TRUE(ToBoolean(Variant::FromLong(3)));
}

#ifdef _WIN32
// A setting of the user's locale as Windows keeps it for the user, beside the locale API
// the code asks; empty when missing.
Text UserLocaleSetting(TextView name) {
  Win32Registry registry;
  UniqueRegKey key;
  if (OpenUniqueKey(registry, RegRoot::CurrentUser, u"Control Panel\\International", RegAccess::Read, key) != 0)
    return {};
  std::uint8_t bytes[128] = {};
  std::uint32_t size = sizeof bytes;
  if (registry.QueryValue(key.Get(), name, nullptr, bytes, &size) != 0) return {};
  Text text;
  for (std::uint32_t i = 0; i + 1 < size && (bytes[i] | bytes[i + 1]) != 0; i += 2)
    text.push_back(static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8));
  return text;
}

// CTest runs this once more under a Swiss French locale (French words, "." between date
// parts) and names it in NV_EXPECTED_LOCALE.
TEST(Conversions, BooleanTextAndSeparatorsFollowTheUserLocale) {
  const Text locale = UserLocaleSetting(u"LocaleName");
  ASSERT_FALSE(locale.empty());
  if (const char* expected = std::getenv("NV_EXPECTED_LOCALE")) {
    ASSERT_EQ(ToUtf8(locale), expected);
  }
  const bool french = locale.starts_with(u"fr");
  EXPECT_EQ(BooleanText(true), french ? u"Vrai" : u"True");
  EXPECT_EQ(BooleanText(false), french ? u"Faux" : u"False");
  EXPECT_EQ(SystemDateSeparator(), UserLocaleSetting(u"sDate"));
  EXPECT_EQ(SystemTimeSeparator(), UserLocaleSetting(u"sTime"));
}
#else
TEST(Conversions, BooleanTextFollowsLocaleEnvironment) {
  ::setenv("LC_ALL", "fr_FR.UTF-8", 1);
  EXPECT_EQ(BooleanText(true), u"Vrai");
  EXPECT_EQ(BooleanText(false), u"Faux");
  ::setenv("LC_ALL", "en_US.UTF-8", 1);
  EXPECT_EQ(BooleanText(true), u"True");
  ::unsetenv("LC_ALL");
  ::setenv("LC_MESSAGES", "", 1);
  ::setenv("LANG", "fr_CA", 1);
  EXPECT_EQ(BooleanText(false), u"Faux");
  ::setenv("LANG", "C", 1);
  EXPECT_EQ(BooleanText(false), u"False");
}
#endif

}  // namespace
}  // namespace nv
