#include "host/regfile/RegNameLimits.h"

#include <stdexcept>

#include "common/Utf.h"
#include "store/Registry.h"

namespace nv {
namespace {

std::string Shown(TextView name) {
  return "\"" + ToUtf8(name.substr(0, 40)) + (name.size() > 40 ? "...\"" : "\"");
}

std::string LineBreakFault(TextView name, const char* what) {
  const std::size_t at = name.find_first_of(u"\r\n");
  if (at == TextView::npos) return {};
  return std::string("the ") + what + " " + Shown(name.substr(0, at)) + "... holds a line break (" +
         (name[at] == u'\r' ? "CR" : "LF") + "), which a registry file cannot carry";
}

}  // namespace

std::string RegistryNameFault(TextView subKey, TextView valueName) {
  std::size_t depth = 0;
  for (TextView rest = subKey; !rest.empty();) {
    const std::size_t end = rest.find(u'\\');
    const TextView name = rest.substr(0, end);
    rest.remove_prefix(end == TextView::npos ? rest.size() : end + 1);
    if (name.empty()) return "a key path cannot hold an empty name (two backslashes in a row)";
    if (name.size() > RegLimit::KeyNameLength)
      return "the key name " + Shown(name) + " has " + std::to_string(name.size()) +
             " characters; the registry allows at most " + std::to_string(RegLimit::KeyNameLength);
    if (std::string fault = LineBreakFault(name, "key name"); !fault.empty()) return fault;
    ++depth;
  }
  if (depth > RegLimit::KeyDepth)
    return "the key path is " + std::to_string(depth) + " levels deep; the registry allows at most " +
           std::to_string(RegLimit::KeyDepth);
  if (valueName.size() > RegLimit::ValueNameLength)
    return "the value name " + Shown(valueName) + " has " + std::to_string(valueName.size()) +
           " characters; the registry allows at most " + std::to_string(RegLimit::ValueNameLength);
  return LineBreakFault(valueName, "value name");
}

void RequireRegistryNames(TextView subKey, TextView valueName) {
  if (std::string fault = RegistryNameFault(subKey, valueName); !fault.empty())
    throw std::runtime_error(fault + "; nothing was written");
}

}  // namespace nv
