#include <gtest/gtest.h>

#include "common/Error.h"
#include "common/Utf.h"
#include "plugin/ExtractionChaine.h"
#include "store/ActionsLayout.h"
#include "store/Texts.h"
#include "tests/support/HostFixture.h"

namespace nv::test {
namespace {

class Descriptions : public HostTest {
 public:
  Text Describe(std::int32_t language) {
    ExtractionChaine plugin;
    plugin.InitializeProperties(u"T", u"S", language);
    return plugin.GetTaskDescription();
  }
  Text Actions(std::int32_t language) {
    ExtractionChaine plugin;
    plugin.InitializeProperties(u"T", u"S", language);
    return plugin.GetActions();
  }
  void PutAction(const Text& kind, const Text& name, const Text& value) {
    PutText(Reg(), kTask + u"\\Action\\" + kind, name, value);
  }
};

Text Fragment(const Text& labels) {
  return u"<table class=\"t\">  <tr>    <td class=\"k\">T</td>    <td class=\"n\">String extraction</td>  </tr>"
         u"</table><table class=\"t\">  <tr>    <td rowspan=\"7\" valign=\"top\" class=\"m\">      <table class=\"1\">" +
         labels +
         u"          <td class=\"p\"></td>          <td class=\"o\">a <b> comment</td>      </table>    </td>  </tr>";
}

Text Row(const Text& label, const Text& value) {
  return u"        <tr>          <td class=\"i\">" + label + u"</td>          <td class=\"j\">" + value +
         u"</td>        </tr>";
}

TEST_F(Descriptions, FragmentIsExactAndUnescaped) {
  PutDword(Reg(), kTask, u"Fonction", 1);
  PutText(Reg(), kTask, u"Chaine", u"x<y");
  PutText(Reg(), kTask, u"Separateur", u" ");
  PutText(Reg(), kTask, u"Comment", u"a <b> comment");
  EXPECT_EQ(Describe(Language::English),
            Fragment(Row(u"Function :", u"Substrings") + Row(u"String", u"x<y") + Row(u"Separator", u" ") +
                     Row(u"Mask", u"") + Row(u"Filter", u"")));
}

TEST_F(Descriptions, FunctionNamesInBothLanguages) {
  struct Case {
    std::optional<std::uint32_t> function;
    std::int32_t language;
    const char16_t* name;
  } const cases[] = {
      {{}, 0, u"Déconcaténation"}, {0u, 10000, u"Extraction"}, {2u, 0, u"Recherche variables"},
      {2u, 10000, u"Find values"}, {0xFFFFFFFFu, 0, u"-1"},      {7u, 10000, u"7"},
  };
  for (const auto& c : cases) {
    Reg().DeleteTree(RegRoot::LocalMachine, kTask);
    if (c.function) PutDword(Reg(), kTask, u"Fonction", *c.function);
    const Text html = Describe(c.language);
    EXPECT_NE(html.find(u"\">" + Text(c.name) + u"</td>"), Text::npos) << ToUtf8(c.name);
    EXPECT_NE(html.find(c.language == 0 ? u"Extraction Chaine" : u"String extraction"), Text::npos);
  }
}

TEST_F(Descriptions, ActionsTextByKind) {
  struct Case {
    const char* what;
    std::function<void(Descriptions&)> arrange;
    std::int32_t language;
    const char16_t* expected;
  };
  const Case cases[] = {
      {"none", [](Descriptions&) {}, 0, u""},
      {"OnErr English", [](Descriptions& t) { PutDword(t.Reg(), t.kTask + u"\\Action\\OnErr", u"Go", 1); }, 10000,
       u"[OnErr]#Run scenario : True\r\n    Auto-Run : False#"},
      {"OnErr French keeps True/False for Loop",
       [](Descriptions& t) {
         t.PutAction(u"OnErr", u"Go", u"0");
         t.PutAction(u"OnErr", u"Loop", u"1");
       },
       0, u"[OnErr]#Continuez le scénario : Faux\r\n    Auto-Relance : True#"},
      {"OnDec without Go", [](Descriptions& t) { t.PutAction(u"OnDec", u"Other", u"x"); }, 0,
       u"[OnDec]#Continuez le scénario : Faux#"},
      {"ExeIf true in English", [](Descriptions& t) {
         t.PutAction(u"ExeIf", u"Var", u"ok");
         t.PutAction(u"ExeIf", u"Value", u"1");
       },
       10000, u"[ExeIf]#@ok = Vrai#"},
      {"ExeIf false", [](Descriptions& t) {
         t.PutAction(u"ExeIf", u"Var", u"ok");
         t.PutAction(u"ExeIf", u"Value", u"0");
       },
       0, u"[ExeIf]#@ok = Faux#"},
      {"Goto with its condition line", [](Descriptions& t) {
         t.PutAction(u"Goto", u"Dest", u"End");
         t.PutAction(u"Goto", u"GVar", u"n");
         PutDword(t.Reg(), t.kTask + u"\\Action\\Goto", u"Ope", 4);
         PutDword(t.Reg(), t.kTask + u"\\Action\\Goto", u"Check", 1);
         t.PutAction(u"Goto", u"Value", u"1");
       },
       0,
       u"[Goto]#Goto End\r\n    Effectuer le test après exécution : Vrai\r\n    Si @n = 1\r\n    @n = Vrai#"},
      {"Goto with an empty operator", [](Descriptions& t) { t.PutAction(u"Goto", u"Dest", u"X"); }, 10000,
       u"[Goto]#Goto X\r\n    Check after execution : False\r\n    If @  #"},
      {"every kind in type order", [](Descriptions& t) {
         t.PutAction(u"Goto", u"Dest", u"X");
         t.PutAction(u"OnDec", u"Go", u"1");
       },
       10000, u"[OnDec]#Run scenario : True#[Goto]#Goto X\r\n    Check after execution : False\r\n    If @  #"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Reg().DeleteTree(RegRoot::LocalMachine, kTask);
    c.arrange(*this);
    EXPECT_EQ(ToUtf8(Actions(c.language)), ToUtf8(c.expected));
  }
}

TEST_F(Descriptions, ReadingRulesOfStoredValues) {
  EXPECT_TRUE(IsActionFlagSet(Variant::FromLong(1)));
  EXPECT_TRUE(IsActionFlagSet(Variant::FromText(u"1")));
  for (const Variant& v : {Variant::FromText(u"0"), Variant::FromText(u"2"), Variant::FromText(u"yes"), Variant(),
                           Variant::FromText(u""), Variant::FromLong(-1)}) {
    EXPECT_FALSE(IsActionFlagSet(v));
  }
  const char16_t* operators[] = {u"<", u"<=", u">", u">=", u"=", u"<>"};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(OperatorText(Variant::FromLong(i)), operators[i]);
  EXPECT_EQ(OperatorText(Variant::FromText(u"4")), u"=");
  EXPECT_EQ(OperatorText(Variant::FromText(u"")), u"");
  EXPECT_EQ(OperatorText(Variant::FromLong(9)), u"9");
}

TEST_F(Descriptions, TitleAndSummaryFromTheCatalogue) {
  ExtractionChaine plugin;
  plugin.SetLanguage(0);
  EXPECT_EQ(plugin.GetTitle(), u"Extraction Chaine");
  plugin.SetLanguage(10000);
  EXPECT_EQ(plugin.GetTitle(), u"String extraction");
  EXPECT_FALSE(plugin.GetSummary().empty());
}

}  // namespace
}  // namespace nv::test
