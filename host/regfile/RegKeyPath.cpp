#include <array>

#include "common/CaseMapping.h"
#include "host/regfile/RegFile.h"

namespace nv {
namespace {

constexpr std::size_t kMaxKeyNameLength = 255;

struct RootName {
  RegKey root;
  TextView longName;
  TextView shortName;
};

constexpr std::array<RootName, 5> kRootNames = {{
    {RegRoot::ClassesRoot, u"HKEY_CLASSES_ROOT", u"HKCR"},
    {RegRoot::CurrentUser, u"HKEY_CURRENT_USER", u"HKCU"},
    {RegRoot::LocalMachine, u"HKEY_LOCAL_MACHINE", u"HKLM"},
    {RegRoot::Users, u"HKEY_USERS", u"HKU"},
    {RegRoot::CurrentConfig, u"HKEY_CURRENT_CONFIG", u"HKCC"},
}};

bool ValidSubKey(TextView subKey) {
  while (!subKey.empty()) {
    const std::size_t end = subKey.find(u'\\');
    const std::size_t length = end == TextView::npos ? subKey.size() : end;
    if (length == 0 || length > kMaxKeyNameLength) return false;
    subKey.remove_prefix(end == TextView::npos ? subKey.size() : end + 1);
  }
  return true;
}

}  // namespace

std::optional<RegKeyPath> ParseKeyPath(TextView text) {
  while (!text.empty() && text.back() == u'\\') text.remove_suffix(1);
  const std::size_t slash = text.find(u'\\');
  const Text rootName = UpperCase(text.substr(0, slash));
  const TextView subKey = slash == TextView::npos ? TextView() : text.substr(slash + 1);
  for (const RootName& r : kRootNames) {
    if (rootName != r.longName && rootName != r.shortName) continue;
    if (!ValidSubKey(subKey)) return std::nullopt;
    return RegKeyPath{r.root, Text(subKey)};
  }
  return std::nullopt;
}

Text KeyPathText(RegKey root, TextView subKey) {
  Text text;
  for (const RootName& r : kRootNames) {
    if (r.root == root) text = r.longName;
  }
  if (text.empty()) {  // not a root: still say which number it was
    text = u"0x";
    for (int shift = 28; shift >= 0; shift -= 4) text.push_back(u"0123456789ABCDEF"[(root >> shift) & 0xF]);
  }
  if (!subKey.empty()) text.append(u"\\").append(subKey);
  return text;
}

}  // namespace nv
