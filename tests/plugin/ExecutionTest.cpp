#include <gtest/gtest.h>

#include <random>

#include "common/Utf.h"
#include "host/ScenarioVariables.h"
#include "plugin/ExtractionChaine.h"
#include "plugin/HostModule.h"
#include "store/ModuleState.h"
#include "store/RegistryOperations.h"
#include "store/Texts.h"
#include "tests/support/HostFixture.h"

namespace nv::test {
namespace {

class Execution : public HostTest {
 public:
  // A task T of scenario S with the given function, string, separator and field variables.
  void DefineTask(std::uint32_t function, const Text& chaine, const Text& separator, const std::vector<Text>& fields) {
    PutDword(Reg(), kTask, u"Fonction", function);
    PutText(Reg(), kTask, u"Chaine", chaine);
    PutText(Reg(), kTask, u"Separateur", separator);
    PutDword(Reg(), kTask, u"Fields.Count", static_cast<std::uint32_t>(fields.size()));
    for (std::size_t i = 0; i < fields.size(); ++i) {
      PutText(Reg(), kTask, u"Fields(" + DecimalText(static_cast<std::int64_t>(i + 1)) + u").Var", fields[i]);
    }
  }
  void DefineSubstringField(int i, const Text& var, const Text& start, const Text& end, const Text& showSep) {
    const Text prefix = u"Fields(" + DecimalText(i) + u").";
    PutText(Reg(), kTask, prefix + u"Var", var);
    PutText(Reg(), kTask, prefix + u"Start", start);
    PutText(Reg(), kTask, prefix + u"End", end);
    PutText(Reg(), kTask, prefix + u"ShowSep", showSep);
  }
  // Runs the task once; returns how many times Complete was raised.
  int Execute(std::int32_t language = 0, const Text& task = u"T") {
    ExtractionChaine plugin;
    plugin.InitializeProperties(task, u"S", language);
    plugin.SetReportFilePath(u"report.log");
    int completes = 0;
    plugin.OnComplete = [&] { ++completes; };
    plugin.ExecuteTache();
    return completes;
  }
  Variant Stored(const char16_t* name) { return ReadRegistryValue(u"T", name); }
};

TEST_F(Execution, SplitStoresPiecesIntoTheFieldsVariables) {
  DefineTask(0, u"a;b;c", u";", {u"@X", u"", u"@Z"});
  EXPECT_EQ(Execute(), 1);
  EXPECT_EQ(Variable(u"X"), u"a");
  EXPECT_EQ(Variable(u"Z"), u"c");
  EXPECT_EQ(Stored(u"Etat"), Variant::FromLong(2));
  EXPECT_FALSE(Stored(u"ExecuteLe").IsEmptyText());
  ASSERT_EQ(reportLines.size(), 1u);
  EXPECT_EQ(reportLines[0].text, u"--> Exécution du traitementT");
  EXPECT_EQ(reportLines[0].level, 0);
  EXPECT_EQ(reportLines[0].scenario, "S");
  EXPECT_EQ(reportLines[0].path, "report.log");
}

// The stand-in keeps the Variables key it last wrote open: a store after the scenario's
// variables were deleted, or into another scenario, must still land where it is named.
TEST_F(Execution, StoresLandInTheNamedScenarioAfterItsVariablesWereDeleted) {
  ScenarioVariables variables(Reg());
  variables.Set(u"S", u"A", u"1");
  ASSERT_EQ(Reg().DeleteTree(RegRoot::LocalMachine, u"SOFTWARE\\NOVRA\\Scenarios\\S"), RegError::Success);
  variables.Set(u"S", u"B", u"2");
  variables.Set(u"Other", u"A", u"3");
  variables.Set(u"S", u"C", u"4");
  EXPECT_EQ(Variable(u"A"), std::nullopt);
  EXPECT_EQ(Variable(u"B"), u"2");
  EXPECT_EQ(Variable(u"C"), u"4");
  EXPECT_EQ(ValueNames(Reg(), u"SOFTWARE\\NOVRA\\Scenarios\\Other\\Variables"), std::vector<Text>{u"A"});
}

TEST_F(Execution, MorePiecesThanFieldsFailsAfterStoringTheFirst) {
  DefineTask(0, u"a;b;c;d", u";", {u"@A", u"@B", u"@C"});
  PutText(Reg(), kTask, u"ExecuteLe", u"earlier");
  EXPECT_EQ(Execute(Language::English), 1);
  EXPECT_EQ(Variable(u"A"), u"a");
  EXPECT_EQ(Variable(u"C"), u"c");
  EXPECT_EQ(Stored(u"Etat"), Variant::FromLong(3));
  EXPECT_EQ(Stored(u"ExecuteLe"), Variant::FromText(u"earlier"));
  ASSERT_EQ(reportLines.size(), 2u);
  EXPECT_EQ(reportLines[0].text, u"--> Run processT");
  EXPECT_EQ(reportLines[1].text, u"Execution error #9 ,Subscript out of range");
  EXPECT_EQ(reportLines[1].level, 1);
}

TEST_F(Execution, ErrorsEndInStatusThreeWithTheirLine) {
  struct Case {
    const char* what;
    std::function<void(Execution&)> arrange;
    const char16_t* line;
  };
  const Case cases[] = {
      {"no field count", [](Execution& t) { t.DefineTask(0, u"a", u";", {}); PutText(t.Reg(), t.kTask, u"Fields.Count", u""); },
       u"Erreur d'exécution N°9 ,Subscript out of range"},
      {"missing variable", [](Execution& t) { t.DefineTask(0, u"@Nope", u";", {u"@A"}); },
       u"La variable Nope n'existe pas dans le scénario S"},
      {"empty ShowSep", [](Execution& t) {
         t.DefineTask(1, u"a;b", u";", {u""});
         t.DefineSubstringField(1, u"", u"0", u"0", u"");
       },
       u"Erreur d'exécution N°13 ,Type mismatch"},
      {"start outside 16 bits", [](Execution& t) {
         t.DefineTask(1, u"a;b", u";", {u""});
         t.DefineSubstringField(1, u"@A", u"40000", u"0", u"True");
       },
       u"Erreur d'exécution N°6 ,Overflow"},
      {"function that is no number", [](Execution& t) { PutText(t.Reg(), t.kTask, u"Fonction", u"split"); },
       u"Erreur d'exécution N°13 ,Type mismatch"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Reg().DeleteTree(RegRoot::LocalMachine, kTask);
    reportLines.clear();
    c.arrange(*this);
    EXPECT_EQ(Execute(), 1);
    EXPECT_EQ(Stored(u"Etat"), Variant::FromLong(3));
    ASSERT_FALSE(reportLines.empty());
    EXPECT_EQ(reportLines.back().text, c.line);
    EXPECT_EQ(reportLines.back().level, 1);
  }
}

TEST_F(Execution, VariableReferencesAreResolved) {
  SetVariable(u"Source", u"x,y");
  SetVariable(u"Sep", u",");
  DefineTask(0, u"@Source", u"@Sep", {u"@A", u"@B"});
  Execute();
  EXPECT_EQ(Variable(u"A"), u"x");
  EXPECT_EQ(Variable(u"B"), u"y");

  SetVariable(u"Mask", u"K=*;V=*");
  SetVariable(u"Star", u"*");
  SetVariable(u"Line", u"K=key;V=value");
  Reg().DeleteTree(RegRoot::LocalMachine, kTask);
  DefineTask(2, u"@Line", u"", {u"@K", u"@V"});
  PutText(Reg(), kTask, u"Masque", u"@Mask");
  PutText(Reg(), kTask, u"Filtre", u"@Star");
  Execute();
  EXPECT_EQ(Variable(u"K"), u"key");
  EXPECT_EQ(Variable(u"V"), u"value");
}

TEST_F(Execution, SubstringsCarryStartAndEndFromFieldToField) {
  DefineTask(1, u"a;b;c", u";", {});
  PutDword(Reg(), kTask, u"Fields.Count", 3);
  DefineSubstringField(1, u"@F1", u"2", u"3", u"False");
  DefineSubstringField(2, u"@F2", u"", u"", u"True");    // start and end as the first field left them
  DefineSubstringField(3, u"@F3", u"word", u"0", u"0");  // start still 2, end through the last piece
  Execute();
  EXPECT_EQ(Stored(u"Etat"), Variant::FromLong(2));
  EXPECT_EQ(Variable(u"F1"), u"c");
  EXPECT_EQ(Variable(u"F2"), u"");  // the end 2 left behind now means "through piece 2": an empty range
  EXPECT_EQ(Variable(u"F3"), u"c");
}

// A positional task over a long variable, whose separator is given as it is, reads only the
// stretches its fields take: it stores what the same task stores when its separator is a
// variable, which takes the text whole. A field overwrites the variable it reads, and a field
// that fails stops the run after the ones before it are stored.
TEST_F(Execution, ALongVariableGivesWhatItsWholeTextGives) {
  Text log;
  for (int line = 0; log.size() < (700u << 10); ++line)
    log += u"line " + DecimalText(line) + u" of a log long enough to be read in part\r\n";
  const struct {
    const char16_t *var, *start, *end, *showSep;
  } fields[] = {
      {u"@First", u"0", u"1", u"False"},   {u"@Last100", u"-101", u"0", u"False"},
      {u"@Middle", u"999", u"1999", u"True"}, {u"@Whole", u"0", u"0", u"False"},
      {u"@Inner", u"5", u"-5", u"True"},   {u"@Carried", u"", u"", u"True"},
      {u"", u"-3", u"0", u"True"},         {u"@Tail", u"", u"", u"True"},
      {u"@Log", u"0", u"2", u"True"},      {u"@Fails", u"-32768", u"0", u"False"},
      {u"@After", u"0", u"1", u"False"},
  };
  // Without the fields that take most of the text, a stretch read too short shows.
  for (const bool wide : {true, false}) {
    SCOPED_TRACE(wide ? "with the wide fields" : "without them");
    const auto var = [&](std::size_t i) { return wide || (i != 3 && i != 4) ? Text(fields[i].var) : Text(); };
    std::vector<std::vector<std::optional<Text>>> runs;
    for (const Text separator : {u"\r\n", u"@Sep"}) {
      SetVariable(u"Log", log);
      SetVariable(u"Sep", u"\r\n");
      DefineTask(1, u"@Log", separator, {});
      PutDword(Reg(), kTask, u"Fields.Count", std::size(fields));
      for (std::size_t i = 0; i < std::size(fields); ++i) {
        DefineSubstringField(static_cast<int>(i + 1), var(i), fields[i].start, fields[i].end, fields[i].showSep);
        if (!var(i).empty() && var(i) != u"@Log") SetVariable(var(i).substr(1), u"before");
      }
      { const Text poison(log.size() + 64, u'#'); }  // what memory used again would hold, not the log
      Execute();
      EXPECT_EQ(Stored(u"Etat"), Variant::FromLong(3));
      std::vector<std::optional<Text>> stored;
      for (std::size_t i = 0; i < std::size(fields); ++i)
        stored.push_back(var(i).empty() ? std::nullopt : Variable(var(i).substr(1)));
      runs.push_back(std::move(stored));
    }
    // Compared without printing texts of many KiB.
    EXPECT_TRUE(runs[0] == runs[1]);
    if (wide) {
      EXPECT_TRUE(runs[0][3] == log.substr(0, log.size() - 2));  // its last separator taken off
    }
    EXPECT_EQ(runs[0][0], u"line 0 of a log long enough to be read in part");
    EXPECT_EQ(runs[0][9], u"before");
    EXPECT_EQ(runs[0][10], u"before");
  }
}

// Fields that count from one end only let the variable be read no further than they take
// from either end; the same fields over the same text read whole must give the same.
TEST_F(Execution, FieldsFromEitherEndGiveWhatTheWholeTextGives) {
  Text log;
  for (int line = 0; log.size() < (3u << 20); ++line) log += u"line " + DecimalText(line) + u" of a long log\r\n";
  struct Field {
    Text var, start, end;
  };
  std::vector<std::vector<Field>> tasks = {
      {{u"@A", u"0", u"1"}, {u"@B", u"999", u"1999"}, {u"@C", u"", u""}, {u"@D", u"5", u"7"}},
      {{u"@A", u"0", u"1"}, {u"@B", u"", u""}},        // the end carried is 0: counted from the end
      {{u"@A", u"3", u"2"}, {u"@B", u"10", u"20"}},     // an empty range first
      {{u"@A", u"0", u"32767"}, {u"@B", u"1", u"2"}},  // more lines than the log has
      {{u"", u"-5", u"0"}, {u"@B", u"1", u"2"}},       // a field with no variable resolves nothing
      {{u"@A", u"7", u"8"}, {u"@B", u"-1", u"0"}},
      {{u"@A", u"0", u"1"}, {u"@B", u"-101", u"0"}, {u"@C", u"999", u"1999"}},
      {{u"@A", u"-3", u"-1"}, {u"@B", u"-2", u"0"}},
      {{u"@A", u"-101", u"0"}, {u"@B", u"", u""}},    // carries numbers resolved from the end
      {{u"@A", u"-101", u"0"}, {u"@B", u"5", u""}},
      {{u"@A", u"-101", u"0"}, {u"@B", u"", u"2100"}},
      {{u"@A", u"-101", u"0"}, {u"", u"", u""}, {u"@B", u"5", u"9"}},
      {{u"@A", u"-32768", u"0"}, {u"@B", u"0", u"1"}},
      {{u"@A", u"-5", u"-7"}, {u"@B", u"-1", u"-1"}},  // empty ranges
      {{u"", u"0", u"1"}, {u"@A", u"-3", u"-1"}},      // from the end only, its separator shown
      {{u"@A", u"32000", u"32767"}, {u"@B", u"-101", u"0"}},  // more separators at the start than it keeps
  };
  // And fields drawn at random near either end, numbers left out now and then.
  std::mt19937 random(18);
  const auto number = [&](int low, int high) {
    return random() % 5 == 0 ? Text() : DecimalText(std::uniform_int_distribution<int>(low, high)(random));
  };
  for (int t = 0; t < 12; ++t) {
    std::vector<Field> task;
    for (int i = 0, n = 2 + static_cast<int>(random() % 3); i < n; ++i) {
      const bool fromEnd = random() % 2 == 0;
      task.push_back({random() % 6 == 0 ? Text() : u"@R" + DecimalText(i), fromEnd ? number(-150, -1) : number(0, 2100),
                      fromEnd ? number(-150, 0) : number(1, 2100)});
    }
    tasks.push_back(std::move(task));
  }
  // A log that ends without a separator, too: its last piece is a line.
  const Text logs[] = {log, log.substr(0, log.size() - 2)};
  for (std::size_t t = 0; t < 2 * tasks.size(); ++t) {
    SCOPED_TRACE(t);
    const std::vector<Field>& task = tasks[t % tasks.size()];
    std::vector<std::vector<std::optional<Text>>> runs;
    std::vector<Variant> statuses;
    for (const Text separator : {u"\r\n", u"@Sep"}) {
      SetVariable(u"Log", logs[t / tasks.size()]);
      SetVariable(u"Sep", u"\r\n");
      DefineTask(1, u"@Log", separator, {});
      PutDword(Reg(), kTask, u"Fields.Count", static_cast<std::uint32_t>(task.size()));
      for (std::size_t i = 0; i < task.size(); ++i) {
        const Field& f = task[i];
        DefineSubstringField(static_cast<int>(i + 1), f.var, f.start, f.end, i % 2 == 0 ? u"False" : u"True");
        if (!f.var.empty()) SetVariable(f.var.substr(1), u"before");
      }
      Execute();
      statuses.push_back(Stored(u"Etat"));
      std::vector<std::optional<Text>> stored;
      for (const Field& f : task) stored.push_back(f.var.empty() ? std::nullopt : Variable(f.var.substr(1)));
      runs.push_back(std::move(stored));
    }
    EXPECT_EQ(statuses[0], statuses[1]);
    EXPECT_TRUE(runs[0] == runs[1]);  // compared without printing texts of many KiB
  }
}

TEST_F(Execution, FindWithoutMatchEmptiesTheFirstVariable) {
  SetVariable(u"N", u"old");
  DefineTask(2, u"x=1", u"", {u"@N"});
  PutText(Reg(), kTask, u"Masque", u"y=*");
  PutText(Reg(), kTask, u"Filtre", u"*");
  Execute();
  EXPECT_EQ(Stored(u"Etat"), Variant::FromLong(2));
  EXPECT_EQ(Variable(u"N"), u"");
}

TEST_F(Execution, FindHonoursCaseAndTrimFlags) {
  DefineTask(2, u"name = John ; age = 42", u"", {u"@N", u"@A"});
  PutText(Reg(), kTask, u"Masque", u"NAME=*;AGE=*");
  PutText(Reg(), kTask, u"Filtre", u"*");
  PutText(Reg(), kTask, u"Trim", u"1");
  Execute();
  EXPECT_EQ(Variable(u"N"), u"") << "the text does not begin with NAME=: one empty value";
  EXPECT_EQ(Variable(u"A"), std::nullopt);
  PutText(Reg(), kTask, u"Chaine", u"name=John ;age= 42");
  Execute();
  EXPECT_EQ(Variable(u"N"), u"John");
  EXPECT_EQ(Variable(u"A"), u"42");
  PutText(Reg(), kTask, u"CaseSensitive", u"1");
  Execute();
  EXPECT_EQ(Variable(u"N"), u"");
}

TEST_F(Execution, UnknownFunctionDoesOnlyTheBookkeeping) {
  DefineTask(5, u"a;b", u";", {u"@A"});
  EXPECT_EQ(Execute(), 1);
  EXPECT_EQ(Stored(u"Etat"), Variant::FromLong(2));
  EXPECT_FALSE(Stored(u"ExecuteLe").IsEmptyText());
  EXPECT_EQ(Variable(u"A"), std::nullopt);
  EXPECT_EQ(reportLines.size(), 1u);
}

TEST_F(Execution, RunAndRunT) {
  DefineTask(0, u"a", u";", {u"@A"});
  ExtractionChaine plugin;
  plugin.InitializeProperties(u"T", u"S", 0);
  int completes = 0;
  plugin.OnComplete = [&] { ++completes; };
  plugin.Run(0);
  EXPECT_EQ(completes, 1);
  EXPECT_TRUE(Stored(u"Etat").IsEmptyText()) << "Run 0 executes nothing";
  plugin.Run(-1);
  EXPECT_EQ(Variable(u"A"), u"a");
  EXPECT_EQ(completes, 2);
  SetVariable(u"A", u"changed");
  plugin.RunT(0);
  EXPECT_EQ(Variable(u"A"), u"a");
  EXPECT_EQ(completes, 3);
}

TEST_F(Execution, ReportWriterLivesWithTheObjects) {
  DefineTask(0, u"a", u";", {u"@A"});
  {
    ExtractionChaine plugin;
    EXPECT_EQ(reportWritersMade, 1);
  }
  EXPECT_EQ(HostModule().ReportWriterInstance, nullptr) << "an object that ends releases it";
  EXPECT_EQ(Execute(), 1);
  EXPECT_EQ(reportWritersMade, 2) << "a new object makes a new one; execution finds it there";
  ExtractionChaine survivor;
  {
    ExtractionChaine other;
  }
  survivor.InitializeProperties(u"T", u"S", 0);
  survivor.ExecuteTache();
  EXPECT_EQ(reportWritersMade, 5) << "execution makes one when the module has none";
}

TEST_F(Execution, AReportWriterThatCannotBeMadeFailsTheCreationAndKeepsTheEarlierOne) {
  DefineTask(0, u"a;b", u";", {u"@A", u"@B"});
  ExtractionChaine survivor;
  const std::shared_ptr<ReportWriter> earlier = HostModule().ReportWriterInstance;
  const std::int32_t classNotRegistered = static_cast<std::int32_t>(0x80040154);
  reportWriterFailure = RuntimeError(classNotRegistered, u"The host class ReportWriter cannot be created");
  try {
    ExtractionChaine refused;
    ADD_FAILURE() << "the object was made without a report writer";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), classNotRegistered);
  }
  EXPECT_EQ(HostModule().ReportWriterInstance, earlier) << "the failed creation replaced nothing";
  survivor.InitializeProperties(u"T", u"S", 0);
  survivor.ExecuteTache();
  EXPECT_EQ(Variable(u"B"), u"b");
  EXPECT_EQ(reportLines.size(), 1u) << "the run reports through the earlier writer";
}

}  // namespace
}  // namespace nv::test
