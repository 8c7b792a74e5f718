// One table drives both Preview and execution: what an editor previews for a definition
// is what execution stores into the fields' variables, or, for a field that fails, the
// error line execution reports.
#include <gtest/gtest.h>

#include "common/Conversions.h"
#include "dialog/FrameExtraction.h"
#include "dialog/FrameRecherche.h"
#include "dialog/FrameSplit.h"
#include "plugin/ExtractionChaine.h"
#include "store/TaskStore.h"
#include "tests/dialog/DialogTest.h"

namespace nv::test {
namespace {

struct Definition {
  const char* what;
  std::int16_t fonction;
  Text chaine;
  Text separateur;  // the mask for the find function
  Text filtre;
  std::int16_t caseSensitive;
  std::int16_t trim;
  std::vector<std::array<Text, 3>> fields;  // Start, End, ShowSep; one per field (split, find: count only)
  std::vector<std::pair<Text, Text>> variables;
};

Text FieldVariable(std::size_t k) { return u"@V" + DecimalText(static_cast<std::int64_t>(k + 1)); }

class PreviewMatchesExecution : public DialogTest {
 public:
  // Sets the editor as the dialog does, previews, and returns the values shown per field
  // together with what the editor hands to the save.
  std::vector<Text> Preview(const Definition& d, TaskEditorValues& saved) {
    saved.Fonction = d.fonction;
    std::vector<Text> shown;
    std::vector<Text> variables;
    for (std::size_t k = 0; k < d.fields.size(); ++k) variables.push_back(FieldVariable(k));
    if (d.fonction == FunctionCode::Split) {
      FrameSplit e(ui);
      e.SetScenario(u"S");
      e.SetChaine(d.chaine);
      e.SetSeparateur(d.separateur);
      e.SetColonnes(variables);
      e.btnPreview.Click();
      for (std::int32_t row = 1; row < e.NovraFlexGrid1.Rows(); ++row) shown.push_back(e.NovraFlexGrid1.TextMatrix(row, 1));
      saved.Chaine = e.Chaine();
      saved.Separateur = e.Separateur();
      saved.Colonnes = e.Colonnes();
    } else if (d.fonction == FunctionCode::FindValues) {
      FrameRecherche e(ui);
      e.SetScenario(u"S");
      e.SetChaine(d.chaine);
      e.SetMasque(d.separateur);
      e.SetFiltre(d.filtre);
      e.SetTrimed(d.trim);
      e.SetCaseSensitive(d.caseSensitive);
      e.SetColonnes(variables);
      e.btnPreview.Click();
      for (std::int32_t row = 1; row < e.NovraFlexGrid1.Rows(); ++row) shown.push_back(e.NovraFlexGrid1.TextMatrix(row, 1));
      saved.Chaine = e.Chaine();
      saved.Masque = e.Masque();
      saved.Filtre = e.Filtre();
      saved.IsTrimed = e.IsTrimed();
      saved.CaseSensitive = e.CaseSensitive();
      saved.Colonnes = e.Colonnes();
    } else {
      FrameExtraction e(ui);
      e.SetScenario(u"S");
      e.SetChaine(d.chaine);
      e.SetSeparateur(d.separateur);
      std::vector<LigneExtraction> lignes;
      for (std::size_t k = 0; k < d.fields.size(); ++k) {
        lignes.push_back({FieldVariable(k), d.fields[k][0], d.fields[k][1], d.fields[k][2]});
      }
      e.SetLignes(lignes);
      e.btnPreview.Click();
      for (std::int32_t col = 1; col < e.NovraFlexGrid1.Cols(); ++col) {
        shown.push_back(e.NovraFlexGrid1.TextMatrix(ExtractionRow::Value, col));
      }
      saved.Chaine = e.Chaine();
      saved.Separateur = e.Separateur();
      for (const LigneExtraction& ligne : e.Lignes()) saved.Lignes.push_back(ligne);
    }
    return shown;
  }

  // What execution leaves for each field: the stored value, or the reported error.
  std::vector<Text> Execute(const TaskEditorValues& saved, std::size_t fields) {
    const Text unset = u"(not stored)";
    for (std::size_t k = 0; k < fields; ++k) SetVariable(FieldVariable(k).substr(1), unset);
    SaveTask(u"T", saved);
    ExtractionChaine plugin;
    plugin.InitializeProperties(u"T", u"S", Language::English);
    plugin.ExecuteTache();
    std::vector<Text> stored;
    for (std::size_t k = 0; k < fields; ++k) {
      const Text value = Variable(FieldVariable(k).substr(1)).value_or(unset);
      stored.push_back(value == unset ? reportLines.back().text : value);
    }
    return stored;
  }
};

TEST_F(PreviewMatchesExecution, ForEveryFunction) {
  const Text yes = BooleanText(true);
  const Text no = BooleanText(false);
  const Definition cases[] = {
      {"split, literal", 0, u"a;b;;d", u";", {}, 0, 0, std::vector<std::array<Text, 3>>(4), {}},
      {"split, CR LF", 0, u"one\r\ntwo\r\n", u"\r\n", {}, 0, 0, std::vector<std::array<Text, 3>>(3), {}},
      {"split, variables", 0, u"@In", u"@Sep", {}, 0, 0, std::vector<std::array<Text, 3>>(3),
       {{u"In", u"x|y|z"}, {u"Sep", u"|"}}},
      {"split, several units", 0, u"a<>b<>", u"<>", {}, 0, 0, std::vector<std::array<Text, 3>>(3), {}},
      {"extraction, ranges", 1, u"l1\nl2\nl3\nl4", u"\n", {}, 0, 0,
       {{u"0", u"1", no}, {u"1", u"2", yes}, {u"-2", u"0", no}, {u"0", u"0", yes}}, {}},
      {"extraction, positions carried over", 1, u"a,b,c,d", u",", {}, 0, 0,
       {{u"1", u"3", no}, {u"x", u"", yes}, {u"2.5", u"4", u"1"}}, {}},
      {"extraction, from a variable", 1, u"@In", u",", {}, 0, 0, {{u"1", u"2", no}}, {{u"In", u"p,q,r"}}},
      {"extraction, failing field", 1, u"a,b,c", u",", {}, 0, 0, {{u"0", u"1", no}, {u"-9", u"2", no}}, {}},
      {"find, values", 2, u"Name=Ann;Age=33", u"Name=*;Age=*", u"*", 0, 0, std::vector<std::array<Text, 3>>(2), {}},
      {"find, case and trim", 2, u"KEY: val ", u"key:*", u"*", 0, 1, std::vector<std::array<Text, 3>>(1), {}},
      {"find, variable mask", 2, u"x=1", u"@Mask", u"?", 1, 0, std::vector<std::array<Text, 3>>(1),
       {{u"Mask", u"x=?"}}},
  };
  for (const Definition& d : cases) {
    SCOPED_TRACE(d.what);
    for (const auto& [name, value] : d.variables) SetVariable(name, value);
    TaskEditorValues saved;
    const std::vector<Text> previewed = Preview(d, saved);
    EXPECT_EQ(previewed, Execute(saved, d.fields.size()));
  }
}

}  // namespace
}  // namespace nv::test
