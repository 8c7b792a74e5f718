#include "plugin/DescribeTable.h"

namespace nv {

Text DescribeTable(const Text& taskName, const Text& title, const std::vector<Text>& labels,
                   const std::vector<Text>& values, const Text& comment) {
  Text html;
  html += u"<table class=\"t\">";
  html += u"  <tr>";
  html += u"    <td class=\"k\">" + taskName + u"</td>";
  html += u"    <td class=\"n\">" + title + u"</td>";
  html += u"  </tr>";
  html += u"</table>";
  html += u"<table class=\"t\">";
  html += u"  <tr>";
  html += u"    <td rowspan=\"7\" valign=\"top\" class=\"m\">";
  html += u"      <table class=\"1\">";
  for (std::size_t i = 0; i < labels.size(); ++i) {
    html += u"        <tr>";
    html += u"          <td class=\"i\">" + labels[i] + u"</td>";
    html += u"          <td class=\"j\">" + (i < values.size() ? values[i] : Text()) + u"</td>";
    html += u"        </tr>";
  }
  html += u"          <td class=\"p\"></td>";
  html += u"          <td class=\"o\">" + comment + u"</td>";
  html += u"      </table>";
  html += u"    </td>";
  html += u"  </tr>";
  return html;
}

}  // namespace nv
