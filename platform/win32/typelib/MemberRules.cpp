#include "platform/win32/typelib/MemberRules.h"

#include <algorithm>
#include <stdexcept>

namespace nv::typelib {
namespace {

std::string Narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }

bool Matches(const MemberRef& ref, const std::wstring& type, const Member& member) {
  return ref.type == type && ref.member == member.name && (ref.anyKind || ref.kind == member.kind);
}

}  // namespace

MemberRef ParseMemberRef(const std::wstring& text) {
  const auto dot = text.find(L'.');
  if (dot == std::wstring::npos || dot == 0) throw std::invalid_argument("member expected as Type.Member: " + Narrow(text));
  MemberRef ref;
  ref.type = text.substr(0, dot);
  const auto colon = text.find(L':', dot);
  ref.member = text.substr(dot + 1, colon == std::wstring::npos ? std::wstring::npos : colon - dot - 1);
  if (colon != std::wstring::npos) {
    const std::wstring kind = text.substr(colon + 1);
    ref.anyKind = false;
    if (kind == L"get") ref.kind = INVOKE_PROPERTYGET;
    else if (kind == L"put") ref.kind = INVOKE_PROPERTYPUT;
    else if (kind == L"putref") ref.kind = INVOKE_PROPERTYPUTREF;
    else if (kind == L"method") ref.kind = INVOKE_FUNC;
    else throw std::invalid_argument("unknown member kind: " + Narrow(kind));
  }
  return ref;
}

std::vector<Member> Arrange(const std::wstring& type, std::vector<Member> members, const MemberRules& rules) {
  for (const MemberRef& ref : rules.leftOut) {
    if (ref.type != type) continue;
    const auto removed = std::erase_if(members, [&](const Member& m) { return Matches(ref, type, m); });
    if (removed == 0) throw std::invalid_argument("no member to leave out: " + Narrow(ref.member));
  }
  for (const MemberRules::Move& move : rules.listedAfter) {
    if (move.member.type != type) continue;
    const auto found = std::find_if(members.begin(), members.end(), [&](const Member& m) { return Matches(move.member, type, m); });
    if (found == members.end()) throw std::invalid_argument("no member to move: " + Narrow(move.member.member));
    const Member moving = *found;
    members.erase(found);
    const auto anchor = std::find_if(members.rbegin(), members.rend(), [&](const Member& m) { return m.name == move.anchor; });
    if (anchor == members.rend()) throw std::invalid_argument("no anchor member: " + Narrow(move.anchor));
    members.insert(anchor.base(), moving);
  }
  return members;
}

}  // namespace nv::typelib
