#include <gtest/gtest.h>

#include <regex>

#include "common/Error.h"
#include "common/Utf.h"
#include "store/ModuleState.h"
#include "store/RegistryOperations.h"
#include "store/TaskStore.h"
#include "store/ValueBytes.h"
#include "tests/support/TestRegistry.h"

namespace nv::test {
namespace {

class TaskStore : public TaskContextTest {
 public:
  TaskDefinition Load() {
    TaskDefinition definition;
    definition.Fields.push_back({u"stale", u"", u"", u""});
    LoadTaskDefinition(u"T", definition);
    return definition;
  }
  bool Has(const Text& name) { return GetRaw(Reg(), kTask, name).has_value(); }
};

TEST_F(TaskStore, MissingTaskLoadsAsDefaults) {
  const TaskDefinition d = Load();
  EXPECT_EQ(d.Fonction, 0);
  EXPECT_EQ(d.Comment, u"");
  EXPECT_EQ(d.Chaine, u"");
  EXPECT_EQ(d.CaseSensitive, 0);
  EXPECT_EQ(d.Trim, 0);
  EXPECT_TRUE(d.Fields.empty());
}

TEST_F(TaskStore, LoadsEachFunctionsFields) {
  PutDword(Reg(), kTask, u"Fonction", 1);
  PutText(Reg(), kTask, u"Chaine", u"@Log");
  PutText(Reg(), kTask, u"Separateur", u"\r\n");
  PutText(Reg(), kTask, u"CaseSensitive", u"1");
  PutDword(Reg(), kTask, u"Fields.Count", 2);
  PutText(Reg(), kTask, u"Fields(1).Var", u"@A");
  PutText(Reg(), kTask, u"Fields(1).Start", u"2");
  PutDword(Reg(), kTask, u"Fields(1).End", 3);  // a number reads back as its text
  PutText(Reg(), kTask, u"Fields(1).ShowSep", u"Vrai");
  PutText(Reg(), kTask, u"Fields(2).Var", u"@B");

  TaskDefinition d = Load();
  EXPECT_EQ(d.Fonction, 1);
  EXPECT_EQ(d.Chaine, u"@Log");
  EXPECT_EQ(d.Separateur, u"\r\n");
  EXPECT_EQ(d.CaseSensitive, 1);
  ASSERT_EQ(d.Fields.size(), 2u);
  EXPECT_EQ(d.Fields[0], (TaskField{u"@A", u"2", u"3", u"Vrai"}));
  EXPECT_EQ(d.Fields[1], (TaskField{u"@B", u"", u"", u""}));

  PutDword(Reg(), kTask, u"Fonction", 2);
  d = Load();
  ASSERT_EQ(d.Fields.size(), 2u);
  EXPECT_EQ(d.Fields[0], (TaskField{u"@A", u"", u"", u""})) << "functions 0 and 2 keep the variable alone";

  PutDword(Reg(), kTask, u"Fonction", 0xFFFFFFFF);
  d = Load();
  EXPECT_EQ(d.Fonction, -1);
  EXPECT_TRUE(d.Fields.empty());
}

TEST_F(TaskStore, MissingFieldValueIsEmptyButCounted) {
  PutDword(Reg(), kTask, u"Fields.Count", 3);
  PutText(Reg(), kTask, u"Fields(1).Var", u"@A");
  PutText(Reg(), kTask, u"Fields(3).Var", u"@C");
  const TaskDefinition d = Load();
  ASSERT_EQ(d.Fields.size(), 3u);
  EXPECT_EQ(d.Fields[1].Var, u"");
  EXPECT_EQ(d.Fields[2].Var, u"@C");
}

TEST_F(TaskStore, ConversionFailuresAreRaised) {
  struct Case {
    const char16_t* name;
    const char16_t* value;
    std::int32_t error;
  } const cases[] = {
      {u"Fonction", u"split", ErrorNumber::TypeMismatch},
      {u"Fonction", u"70000", ErrorNumber::Overflow},
      {u"Trim", u"yes", ErrorNumber::TypeMismatch},
      {u"Fields.Count", u"many", ErrorNumber::TypeMismatch},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(ToUtf8(c.name));
    Reg().DeleteTree(RegRoot::LocalMachine, kTask);
    PutText(Reg(), kTask, c.name, c.value);
    try {
      Load();
      ADD_FAILURE() << "no error";
    } catch (const RuntimeError& e) {
      EXPECT_EQ(e.Number(), c.error);
    }
  }
}

// The load reads the key in one pass, yet converts in the reader's order: of several bad
// values the first in that order fails, and names match whatever their case.
TEST_F(TaskStore, LoadConvertsInTheReadersOrder) {
  PutText(Reg(), kTask, u"FIELDS.COUNT", u"many");  // written first, converted last
  PutText(Reg(), kTask, u"trim", u"yes");
  PutText(Reg(), kTask, u"fonction", u"70000");
  try {
    Load();
    ADD_FAILURE() << "no error";
  } catch (const RuntimeError& e) {
    EXPECT_EQ(e.Number(), ErrorNumber::Overflow);  // Fonction's, before Trim's and the count's
  }
  PutText(Reg(), kTask, u"fonction", u"1");
  PutText(Reg(), kTask, u"trim", u"-1");
  PutDword(Reg(), kTask, u"fields.count", 1);
  PutText(Reg(), kTask, u"FIELDS(1).START", u"2");
  PutText(Reg(), kTask, u"fields(1).showsep", u"True");
  PutRaw(Reg(), kTask, u"Fields(1).End", RegType::ExpandSz, BytesFromText(u"%E%"));  // reads as empty
  const TaskDefinition d = Load();
  EXPECT_EQ(d.Fonction, 1);
  EXPECT_EQ(d.Trim, -1);
  ASSERT_EQ(d.Fields.size(), 1u);
  EXPECT_EQ(d.Fields[0], (TaskField{u"", u"2", u"", u"True"}));
}

TEST_F(TaskStore, StatusIsANumber) {
  WriteTaskStatus(u"T", 3);
  EXPECT_EQ(ReadRegistryValue(u"T", u"Etat"), Variant::FromLong(3));
}

TEST_F(TaskStore, SavingANewTaskStampsCreation) {
  TaskEditorValues v;
  v.Fonction = 0;
  v.Chaine = u"a;b";
  v.Separateur = u";";
  v.Colonnes = {u"@X", u""};
  SaveTask(u"T", v);

  EXPECT_EQ(ReadRegistryValue(u"T", u"Etat"), Variant::FromLong(0));
  EXPECT_EQ(ReadRegistryValue(u"T", u"Type"), Variant::FromLong(39));
  EXPECT_FALSE(Has(u"ModifiéLe"));
  const std::string created = ToUtf8(ReadRegistryValue(u"T", u"CréeLe").TextValue());
  EXPECT_TRUE(std::regex_match(created, std::regex(R"(\d\d/\d\d/\d\d \d\d:\d\d:\d\d)"))) << created;
  EXPECT_EQ(ReadRegistryValue(u"T", u"Comment"), Variant::FromText(u"")) << "an empty comment is still written";
  EXPECT_TRUE(Has(u"Comment"));

  const TaskDefinition d = Load();
  EXPECT_EQ(d.Fonction, 0);
  EXPECT_EQ(d.Chaine, u"a;b");
  ASSERT_EQ(d.Fields.size(), 2u);
  EXPECT_EQ(d.Fields[0].Var, u"@X");
  EXPECT_EQ(d.Fields[1].Var, u"");
}

TEST_F(TaskStore, SavingAStoredTaskKeepsItsStatus) {
  PutDword(Reg(), kTask, u"Etat", 2);
  TaskEditorValues v;
  v.TaskStored = true;
  v.Fonction = 2;
  v.Chaine = u"Name=John";
  v.Masque = u"Name=*";
  v.Filtre = u"*";
  v.IsTrimed = 1;
  v.Colonnes = {u"@N"};
  SaveTask(u"T", v);
  EXPECT_EQ(ReadRegistryValue(u"T", u"Etat"), Variant::FromLong(2));
  EXPECT_TRUE(Has(u"ModifiéLe"));
  EXPECT_FALSE(Has(u"CréeLe"));
  EXPECT_EQ(ReadRegistryValue(u"T", u"Trim"), Variant::FromText(u"1")) << "flags are stored as text";
  EXPECT_EQ(ReadRegistryValue(u"T", u"CaseSensitive"), Variant::FromText(u"0"));
  const TaskDefinition d = Load();
  EXPECT_EQ(d.Trim, 1);
  EXPECT_EQ(d.Masque, u"Name=*");
}

TEST_F(TaskStore, SwitchingFunctionDeletesOldFieldsAndKeepsStaleValues) {
  TaskEditorValues extraction;
  extraction.Fonction = 1;
  extraction.Chaine = u"x";
  extraction.Separateur = u";";
  for (int i = 0; i < 5; ++i) extraction.Lignes.push_back({u"@V", u"0", u"1", u"True"});
  SaveTask(u"T", extraction);
  PutText(Reg(), kTask, u"Masque", u"old mask");
  PutText(Reg(), kTask, u"Trim", u"1");
  EXPECT_EQ(ValueNames(Reg(), kTask).size(), 4u + 1 + 2 + 1 + 20 + 2);

  TaskEditorValues split;
  split.TaskStored = true;
  split.Fonction = 0;
  split.Chaine = u"a";
  split.Separateur = u",";
  split.Colonnes = {u"@A"};
  SaveTask(u"T", split);

  for (int i = 1; i <= 5; ++i) {
    for (const char16_t* suffix : {u").Var", u").Start", u").End", u").ShowSep"}) {
      if (i == 1 && Text(suffix) == u").Var") continue;
      EXPECT_FALSE(Has(FieldValueName(i, suffix))) << i << ToUtf8(suffix);
    }
  }
  EXPECT_FALSE(Has(u"Masque")) << "the mask goes with every save";
  EXPECT_EQ(ReadRegistryValue(u"T", u"Trim"), Variant::FromText(u"1")) << "flags are never deleted";
  EXPECT_EQ(ReadRegistryValue(u"T", u"Fields.Count"), Variant::FromLong(1));
}

TEST_F(TaskStore, NoFunctionSavesOnlyTheCommonValues) {
  TaskEditorValues v;
  v.Fonction = FunctionCode::Split;
  v.Colonnes = {u"@A", u"@B"};
  SaveTask(u"T", v);
  ASSERT_TRUE(Has(u"Fields.Count"));
  v.Fonction = -1;
  v.Comment = u"c";
  v.Chaine = u"ignored";
  SaveTask(u"T", v);
  EXPECT_EQ(ReadRegistryValue(u"T", u"Fonction"), Variant::FromLong(-1));
  EXPECT_FALSE(Has(u"Chaine"));
  EXPECT_FALSE(Has(u"Fields.Count"));
  EXPECT_FALSE(Has(u"Fields(1).Var"));
  EXPECT_TRUE(Load().Fields.empty());
}

}  // namespace
}  // namespace nv::test
