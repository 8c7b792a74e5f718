#include <gtest/gtest.h>

#include <vector>

#include "engine/Split.h"

namespace nv {
namespace {

TEST(Split, CutsAtEverySeparatorAndLeavesTheLastPieceInTheText) {
  struct Case {
    Text text;
    Text separator;
    std::vector<Text> pieces;
  } const cases[] = {
      {u"a;b;c", u";", {u"a", u"b", u"c"}},
      {u"a;;b", u";", {u"a", u"", u"b"}},
      {u";a", u";", {u"", u"a"}},
      {u"a;", u";", {u"a", u""}},
      {u"", u";", {u""}},
      {u"abc", u";", {u"abc"}},
      {u"1\r\n2\r\n3", u"\r\n", {u"1", u"2", u"3"}},
      {u"1\r\n2\r\n3", u"\n", {u"1\r", u"2\r", u"3"}},
      {u"ab,,cd", u",,", {u"ab", u"cd"}},
      {u"a,,,b", u",,", {u"a", u",b"}},
      {u"A;a", u"a", {u"A;", u""}},
      {u"ab", u"abc", {u"ab"}},
      {u"abc", u"", {u"", u"", u"", u""}},
      {u"", u"", {u""}},
      {u"x\u00E9y\u00E9", u"\u00E9", {u"x", u"y", u""}},
  };
  for (const auto& c : cases) {
    Text text = c.text;
    SplitPieces pieces;
    SplitBySeparator(text, c.separator, pieces);
    const std::vector<TextView> views = pieces.Views();
    EXPECT_EQ(std::vector<Text>(views.begin(), views.end()), c.pieces) << "case " << (&c - cases);
    EXPECT_EQ(text, c.pieces.back()) << "case " << (&c - cases);
  }
}

}  // namespace
}  // namespace nv
