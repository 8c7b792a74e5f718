#include "host/nvhost/JsonWriter.h"

#include "common/Utf.h"

namespace nv {
namespace {

void AppendEscapedUnit(std::string& out, char16_t unit) {
  static const char digits[] = "0123456789abcdef";
  out += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) out.push_back(digits[(unit >> shift) & 0xF]);
}

std::string Joined(const std::vector<std::string>& parts, char open, char close) {
  std::string out(1, open);
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) out.push_back(',');
    out += parts[i];
  }
  out.push_back(close);
  return out;
}

}  // namespace

std::string JsonString(TextView text) {
  std::string out = "\"";
  out.reserve(text.size() + 2);
  AppendJsonStringBody(text, out);
  out.push_back('"');
  return out;
}

void AppendJsonStringBody(TextView text, std::string& out) {
  // Runs of units written as they are go out in one conversion: a variable of many MiB is
  // not converted a unit at a time.
  std::size_t run = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    const bool high = unit >= 0xD800 && unit <= 0xDBFF;
    if (high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
      ++i;  // a pair, written as its character
      continue;
    }
    if (unit >= 0x20 && unit != u'"' && unit != u'\\' && (unit < 0xD800 || unit > 0xDFFF)) continue;
    AppendUtf8(text.substr(run, i - run), out);
    run = i + 1;
    switch (unit) {
      case u'"': out += "\\\""; break;
      case u'\\': out += "\\\\"; break;
      case u'\n': out += "\\n"; break;
      case u'\r': out += "\\r"; break;
      case u'\t': out += "\\t"; break;
      default: AppendEscapedUnit(out, unit);  // a control, or a lone surrogate, which has no UTF-8 form
    }
  }
  AppendUtf8(text.substr(run), out);
}

std::string JsonString(const std::string& utf8) { return JsonString(FromUtf8(utf8)); }

std::string JsonObject(const std::vector<std::string>& members) { return Joined(members, '{', '}'); }
std::string JsonArray(const std::vector<std::string>& elements) { return Joined(elements, '[', ']'); }
std::string JsonMember(const std::string& name, const std::string& value) { return JsonString(name) + ":" + value; }

}  // namespace nv
