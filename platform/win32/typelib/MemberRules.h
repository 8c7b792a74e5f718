#pragma once
// Where the finished library departs from the declaration order of the IDL: members it
// leaves undescribed and members it lists elsewhere. Every member keeps its vtable slot.
#include <windows.h>
#include <oaidl.h>

#include <string>
#include <vector>

namespace nv::typelib {

struct MemberRef {
  std::wstring type;    // the interface's name
  std::wstring member;  // the member's name
  INVOKEKIND kind = INVOKE_FUNC;
  bool anyKind = true;  // no kind given: every member of that name
};

struct MemberRules {
  std::vector<MemberRef> leftOut;
  // The member goes right after the last member called `anchor` of the same interface.
  struct Move {
    MemberRef member;
    std::wstring anchor;
  };
  std::vector<Move> listedAfter;
};

// "Type.Member" or "Type.Member:get|put|putref|method".
MemberRef ParseMemberRef(const std::wstring& text);

// One described member of the source interface.
struct Member {
  UINT sourceIndex = 0;
  std::wstring name;
  INVOKEKIND kind = INVOKE_FUNC;
};

// The members of `type` in the finished order, without those left out. A rule that
// names no member is an error: it would otherwise hide a typo in the build.
std::vector<Member> Arrange(const std::wstring& type, std::vector<Member> members, const MemberRules& rules);

}  // namespace nv::typelib
