// What nvhost writes for machines: JSON texts, and the options and verbs the man page and
// the completion are generated from.
#include <gtest/gtest.h>

#include "host/nvhost/Commands.h"
#include "host/nvhost/Documentation.h"
#include "host/nvhost/JsonWriter.h"

namespace nv {
namespace {

TEST(JsonString, EscapesWhatJsonForbidsAndKeepsTheRest) {
  const struct Case {
    Text text;
    const char* json;
  } cases[] = {
      {u"plain", "\"plain\""},
      {u"q\"b\\s/", "\"q\\\"b\\\\s/\""},
      {u"\r\n\t\x01\x1f", "\"\\r\\n\\t\\u0001\\u001f\""},
      {u"été 日 \U0001F600", "\"\xC3\xA9t\xC3\xA9 \xE6\x97\xA5 \xF0\x9F\x98\x80\""},
      {Text(u"a\0b", 3), "\"a\\u0000b\""},
      {Text(1, static_cast<char16_t>(0xD800)) + u"x", "\"\\ud800x\""},
      // Pairs and lone surrogates beside escapes, at either end of the runs written whole.
      {u"\U0001F600\"x\n\U0001F601", "\"\xF0\x9F\x98\x80\\\"x\\n\xF0\x9F\x98\x81\""},
      {Text(1, static_cast<char16_t>(0xDC00)) + u"a" + Text(1, static_cast<char16_t>(0xD800)),
       "\"\\udc00a\\ud800\""},
  };
  for (const Case& c : cases) EXPECT_EQ(JsonString(TextView(c.text)), c.json);
  EXPECT_EQ(JsonObject({JsonMember("a", "1"), JsonMember("b", JsonArray({"2", "\"x\""}))}),
            "{\"a\":1,\"b\":[2,\"x\"]}");
  EXPECT_EQ(JsonArray({}), "[]");
}

TEST(Documentation, OptionsAndVerbsComeFromTheHelpTexts) {
  const auto find = [](const char* name) {
    for (const Command& command : PortableCommands())
      if (std::string(command.name) == name) return command;
    throw std::logic_error(name);
  };
  EXPECT_EQ(CommandVerbs(find("var")), (std::vector<std::string>{"get", "set", "list", "unset"}));
  EXPECT_EQ(CommandVerbs(find("action")), (std::vector<std::string>{"add", "modify", "delete"}));
  EXPECT_EQ(CommandVerbs(find("run")), std::vector<std::string>{});
  const std::vector<std::string> edit = CommandOptions(find("edit"));
  for (const char* option : {"--new", "--separator-choice", "--case-sensitive", "--trim", "--no-fields", "--confirm",
                             "--cancel", "--help"}) {
    EXPECT_NE(std::find(edit.begin(), edit.end(), option), edit.end()) << option;
  }
  for (const std::string& option : edit) EXPECT_NE(option.back(), '-') << option;
}

}  // namespace
}  // namespace nv
