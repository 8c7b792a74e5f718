// The linter's findings, one case per rule, and a clean task of each function.
#include <gtest/gtest.h>

#include <map>

#include "common/Utf.h"
#include "host/nvhost/TaskLinter.h"

namespace nv {
namespace {

using Severity = LintFinding::Severity;

TaskDefinition Task(std::int16_t function, Text chaine, Text separator, std::vector<Text> vars) {
  TaskDefinition task;
  task.Fonction = function;
  task.Chaine = std::move(chaine);
  task.Separateur = std::move(separator);
  for (Text& var : vars) task.Fields.push_back({std::move(var), {}, {}, {}});
  return task;
}

TaskDefinition Find(Text chaine, Text mask, Text filter, std::vector<Text> vars, bool caseSensitive = false) {
  TaskDefinition task = Task(FunctionCode::FindValues, std::move(chaine), {}, std::move(vars));
  task.Masque = std::move(mask);
  task.Filtre = std::move(filter);
  task.CaseSensitive = caseSensitive ? 1 : 0;
  return task;
}

class MapVariables final : public LintVariables {
 public:
  explicit MapVariables(std::map<Text, Text> values) : values_(std::move(values)) {}
  std::optional<Text> Value(const Text& name) override {
    const auto found = values_.find(name);
    return found == values_.end() ? std::nullopt : std::optional<Text>(found->second);
  }

 private:
  std::map<Text, Text> values_;
};

TEST(TaskLinter, OneFindingPerRule) {
  MapVariables variables({{u"Line", u"a;b;c"}, {u"Conf", u"host=db; port=1"}, {u"Empty", u""}});
  const struct Case {
    const char* name;
    TaskDefinition task;
    Severity severity;
    const char* fragment;
  } cases[] = {
      {"missing string variable", Task(0, u"@Nope", u";", {u"@A"}), Severity::Error, "refers to @Nope"},
      {"missing separator variable", Task(0, u"x", u"@Nope", {u"@A"}), Severity::Error, "refers to @Nope"},
      {"empty separator", Task(0, u"x", u"@Empty", {u"@A"}), Severity::Error, "separator is empty"},
      {"separator not in input", Task(0, u"@Line", u",", {u"@A"}), Severity::Warning, "does not occur in the input"},
      {"more pieces than fields", Task(0, u"@Line", u";", {u"@A", u"@B"}), Severity::Error, "error 9"},
      {"fewer pieces than fields", Task(0, u"@Line", u";", {u"@A", u"@B", u"@C", u"@D"}), Severity::Warning,
       "fields 4 to 4 would keep"},
      {"field without @", Task(0, u"a", u";", {u"A"}), Severity::Error, "has no \"@\""},
      {"field without variable", Task(0, u"a;b", u";", {u"@A", u""}), Severity::Warning, "field 2 has no variable"},
      {"substrings separator", Task(1, u"@Line", u"|", {u"@A"}), Severity::Warning, "does not occur in the input"},
      {"filter not in mask", Find(u"@Conf", u"host=?", u"*", {u"@H"}), Severity::Error, "does not occur in the mask"},
      {"lower-case filter, case-insensitive", Find(u"@Conf", u"host=x", u"x", {u"@H"}), Severity::Error,
       "not upper-case"},
      {"adjacent placeholders", Find(u"@Conf", u"host=**", u"*", {u"@H", u"@P"}, true), Severity::Warning,
       "placeholders touch"},
      {"filter inside the input", Find(u"a=*b", u"a=*", u"*", {u"@A"}), Severity::Warning, "occurs in the input"},
      {"more values than fields", Find(u"@Conf", u"host=*; port=*", u"*", {u"@H"}), Severity::Error, "error 9"},
      {"fewer values than fields", Find(u"@Conf", u"host=*; port=*", u"*", {u"@H", u"@P", u"@U"}),
       Severity::Warning, "would keep their old values"},
      {"empty filter", Find(u"@Conf", u"host", u"", {u"@H"}), Severity::Error, "filter is empty"},
      {"unknown function", Task(7, u"x", u";", {}), Severity::Error, "none of split"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const std::vector<LintFinding> findings = LintTask(c.task, variables);
    bool found = false;
    for (const LintFinding& finding : findings)
      found = found || (finding.severity == c.severity && finding.message.find(c.fragment) != std::string::npos);
    std::string all;
    for (const LintFinding& finding : findings)
      all += std::string(SeverityName(finding.severity)) + ": " + finding.message + "\n";
    EXPECT_TRUE(found) << all;
  }
  for (const TaskDefinition& clean : {Task(0, u"@Line", u";", {u"@A", u"@B", u"@C"}),
                                      Task(1, u"@Line", u";", {u"@A"}),
                                      Find(u"@Conf", u"host=*; port=*", u"*", {u"@H", u"@P"})}) {
    EXPECT_TRUE(LintTask(clean, variables).empty()) << ToUtf8(clean.Chaine);
  }
}

}  // namespace
}  // namespace nv
