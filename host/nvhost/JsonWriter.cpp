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
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    switch (unit) {
      case u'"': out += "\\\""; continue;
      case u'\\': out += "\\\\"; continue;
      case u'\n': out += "\\n"; continue;
      case u'\r': out += "\\r"; continue;
      case u'\t': out += "\\t"; continue;
      default: break;
    }
    if (unit < 0x20) {
      AppendEscapedUnit(out, unit);
    } else if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
               text[i + 1] <= 0xDFFF) {
      out += ToUtf8(text.substr(i, 2));
      ++i;
    } else if (unit >= 0xD800 && unit <= 0xDFFF) {
      AppendEscapedUnit(out, unit);  // a lone surrogate has no UTF-8 form
    } else {
      out += ToUtf8(text.substr(i, 1));
    }
  }
  out.push_back('"');
  return out;
}

std::string JsonString(const std::string& utf8) { return JsonString(FromUtf8(utf8)); }

std::string JsonObject(const std::vector<std::string>& members) { return Joined(members, '{', '}'); }
std::string JsonArray(const std::vector<std::string>& elements) { return Joined(elements, '[', ']'); }
std::string JsonMember(const std::string& name, const std::string& value) { return JsonString(name) + ":" + value; }

}  // namespace nv
