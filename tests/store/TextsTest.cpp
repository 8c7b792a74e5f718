#include <gtest/gtest.h>

#include "common/Error.h"
#include "store/ModuleState.h"
#include "store/Texts.h"
#include "tests/support/TestRegistry.h"

namespace nv::test {
namespace {

const Text kConfiguration = u"SOFTWARE\\NOVRA\\Configuration";

using Texts = RegistryTest;

TEST_F(Texts, LanguageSettingPicksTheTable) {
  struct Case {
    const char* what;
    std::optional<Text> textSetting;
    std::optional<std::uint32_t> numberSetting;
    const char16_t* expected505;
  } const cases[] = {
      {"no setting", {}, {}, u"Vous devez sélectionner une fonction"},
      {"number 10000", {}, 10000u, u"You have to select a function"},
      {"text 10000", Text(u"10000"), {}, u"You have to select a function"},
      {"number 0", {}, 0u, u"Vous devez sélectionner une fonction"},
      {"empty text", Text(u""), {}, u"Vous devez sélectionner une fonction"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Reg().DeleteTree(RegRoot::LocalMachine, kConfiguration);
    if (c.textSetting) PutText(Reg(), kConfiguration, u"Lang", *c.textSetting);
    if (c.numberSetting) PutDword(Reg(), kConfiguration, u"Lang", *c.numberSetting);
    Module().LanguageOffset = 12345;
    ReadLanguageSetting();
    EXPECT_EQ(LoadText(TextId::FunctionMissingMessage), c.expected505);
  }
}

TEST_F(Texts, ReadingTheSettingRestoresTheContext) {
  SetRegistryContext(static_cast<std::int32_t>(RegRoot::CurrentUser), u"Somewhere\\Else");
  PutDword(Reg(), kConfiguration, u"Lang", 10000);
  ReadLanguageSetting();
  EXPECT_EQ(Module().CurrentRoot, RegRoot::CurrentUser);
  EXPECT_EQ(Module().CurrentSubKey, u"Somewhere\\Else");
  EXPECT_EQ(Module().LanguageOffset, 10000);
}

TEST_F(Texts, SettingThatIsNoNumberIsRaised) {
  PutText(Reg(), kConfiguration, u"Lang", u"English");
  SetRegistryContext(0, u"Kept");
  EXPECT_THROW(ReadLanguageSetting(), RuntimeError);
  EXPECT_EQ(Module().CurrentSubKey, u"Kept");
}

TEST_F(Texts, MissingTextIsAResourceError) {
  struct Case {
    std::int32_t offset;
    std::int32_t error;
  } const cases[] = {
      {5, ErrorNumber::ResourceNotFound},
      {20000, ErrorNumber::ResourceNotFound},
      {INT32_MAX, ErrorNumber::Overflow},
  };
  for (const auto& c : cases) {
    Module().LanguageOffset = c.offset;
    try {
      LoadText(TextId::FunctionMissingMessage);
      ADD_FAILURE() << "no error at " << c.offset;
    } catch (const RuntimeError& e) {
      EXPECT_EQ(e.Number(), c.error);
    }
  }
}

}  // namespace
}  // namespace nv::test
