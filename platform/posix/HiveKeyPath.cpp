#include "platform/posix/HiveKeyPath.h"

#include "common/CaseMapping.h"

namespace nv {

bool IsPredefinedRoot(RegKey key) noexcept {
  switch (key) {
    case RegRoot::ClassesRoot:
    case RegRoot::CurrentUser:
    case RegRoot::LocalMachine:
    case RegRoot::Users:
    case RegRoot::CurrentConfig:
      return true;
    default:
      return false;
  }
}

RegStatus SplitKeyPath(TextView path, std::vector<TextView>& names) {
  names.clear();
  while (!path.empty() && path.back() == u'\\') path.remove_suffix(1);
  if (path.empty()) return RegError::Success;
  if (path.front() == u'\\') return RegError::BadPathName;
  for (;;) {
    const std::size_t end = path.find(u'\\');
    const TextView name = path.substr(0, end);
    if (name.empty()) return RegError::BadPathName;
    if (name.size() > kMaxKeyNameLength) return RegError::InvalidParameter;
    names.push_back(name);
    if (end == TextView::npos) return RegError::Success;
    path.remove_prefix(end + 1);
  }
}

bool HasLineBreak(TextView name) noexcept { return name.find_first_of(u"\r\n") != TextView::npos; }

void FoldName(TextView name, std::vector<std::uint8_t>& folded) {
  folded.resize(name.size() * 2);
  for (std::size_t i = 0; i < name.size(); ++i) {
    const char16_t upper = UpperChar(name[i]);
    folded[2 * i] = static_cast<std::uint8_t>(upper >> 8);
    folded[2 * i + 1] = static_cast<std::uint8_t>(upper & 0xFF);
  }
}

}  // namespace nv
