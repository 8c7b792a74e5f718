#include <gtest/gtest.h>

#include "common/Error.h"
#include "plugin/ExtractionChaine.h"
#include "store/ModuleState.h"
#include "store/Texts.h"
#include "tests/support/HostFixture.h"

namespace nv::test {
namespace {

using PluginObject = HostTest;

TEST_F(PluginObject, NewObjectReadsTheLanguageAndStartsEmpty) {
  PutDword(Reg(), u"SOFTWARE\\NOVRA\\Configuration", u"Lang", 10000);
  ExtractionChaine plugin;
  EXPECT_EQ(Module().LanguageOffset, 10000);
  EXPECT_EQ(plugin.Nom, u"");
  EXPECT_EQ(plugin.Regst, 0);
  EXPECT_EQ(plugin.Etat, 0);
  EXPECT_EQ(plugin.Bouton, nullptr);
}

TEST_F(PluginObject, LanguageThatIsNoNumberFailsTheCreation) {
  PutText(Reg(), u"SOFTWARE\\NOVRA\\Configuration", u"Lang", u"fr");
  EXPECT_THROW(ExtractionChaine(), RuntimeError);
}

TEST_F(PluginObject, InitializePropertiesSetsTheHostContext) {
  ExtractionChaine first;
  ExtractionChaine plugin;
  plugin.Rapport = u"kept.log";
  plugin.InitializeProperties(u"T1", u"S", 10000);
  EXPECT_EQ(plugin.Regst, static_cast<std::int32_t>(0x80000002));
  EXPECT_EQ(plugin.RegstCle, u"SOFTWARE\\NOVRA\\Scenarios\\S\\Taches");
  EXPECT_EQ(plugin.Nom, u"T1");
  EXPECT_EQ(plugin.Scen, u"S");
  EXPECT_EQ(plugin.Etat, 1);
  EXPECT_EQ(plugin.Rapport, u"kept.log");
  EXPECT_EQ(LoadText(TextId::ConfirmButton), u"&Confirm") << "the language is the module's, for every object";
  first.SetLanguage(0);
  EXPECT_EQ(LoadText(TextId::ConfirmButton), u"&Valider");
  first.SetLanguage(7);
  EXPECT_EQ(Module().LanguageOffset, 7) << "any number is stored";
}

TEST_F(PluginObject, WorkingModeIsSixteenBits) {
  ExtractionChaine plugin;
  plugin.SetWorkingMode(-32768);
  EXPECT_EQ(plugin.GetWorkingMode(), -32768);
  plugin.SetWorkingMode(1);
  for (const std::int32_t tooLarge : {40000, 32768, -32769}) {
    try {
      plugin.SetWorkingMode(tooLarge);
      ADD_FAILURE() << tooLarge;
    } catch (const RuntimeError& e) {
      EXPECT_EQ(e.Number(), ErrorNumber::Overflow);
    }
    EXPECT_EQ(plugin.Etat, 1);
  }
}

TEST_F(PluginObject, StatusComesFromTheTaskKey) {
  ExtractionChaine plugin;
  plugin.InitializeProperties(u"T", u"S", 0);
  const Text task = u"SOFTWARE\\NOVRA\\Scenarios\\S\\Taches\\T";
  EXPECT_EQ(plugin.GetStatus(), 0) << "never stored";
  PutDword(Reg(), task, u"Etat", 3);
  EXPECT_EQ(plugin.GetStatus(), 3);
  PutText(Reg(), task, u"Etat", u"2");
  EXPECT_EQ(plugin.GetStatus(), 2);
  PutText(Reg(), task, u"Etat", u"running");
  EXPECT_THROW(plugin.GetStatus(), RuntimeError);
  EXPECT_EQ(Module().CurrentSubKey, u"SOFTWARE\\NOVRA\\Scenarios\\S\\Taches");
}

}  // namespace
}  // namespace nv::test
