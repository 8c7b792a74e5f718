// nvtlbgen: finishes the plug-in's type library. widl compiles our IDL but describes every
// declared member at the slot of its declaration order; the host's layout has a slot the
// library does not describe and a member listed away from its slot. This tool, run under
// Wine at build time, copies widl's library through CreateTypeLib2, which keeps the
// vtable offsets it is given.
//
//   nvtlbgen --win32|--win64 [--leave-out Type.Member[:kind]]... [--list-after Type.Member=Anchor]...
//            widl.tlb finished.tlb
#include <windows.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "platform/win32/typelib/Check.h"
#include "platform/win32/typelib/LibraryCopy.h"
#include "platform/win32/typelib/MemberRules.h"

namespace {

using Microsoft::WRL::ComPtr;
using nv::typelib::Check;

struct Arguments {
  SYSKIND kind = SYS_WIN64;
  bool kindGiven = false;
  nv::typelib::MemberRules rules;
  std::vector<std::wstring> files;
};

std::wstring Widen(const char* text) {
  const int length = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
  std::wstring result(static_cast<std::size_t>(length > 0 ? length - 1 : 0), L'\0');
  if (length > 1) MultiByteToWideChar(CP_ACP, 0, text, -1, result.data(), length);
  return result;
}

Arguments Parse(int argc, char** argv) {
  Arguments args;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    const bool hasValue = i + 1 < argc;
    if (arg == "--win32" || arg == "--win64") {
      args.kind = arg == "--win32" ? SYS_WIN32 : SYS_WIN64;
      args.kindGiven = true;
    } else if (arg == "--leave-out" && hasValue) {
      args.rules.leftOut.push_back(nv::typelib::ParseMemberRef(Widen(argv[++i])));
    } else if (arg == "--list-after" && hasValue) {
      const std::wstring value = Widen(argv[++i]);
      const auto equals = value.find(L'=');
      if (equals == std::wstring::npos) throw std::invalid_argument("--list-after Type.Member=Anchor");
      args.rules.listedAfter.push_back({nv::typelib::ParseMemberRef(value.substr(0, equals)), value.substr(equals + 1)});
    } else if (!arg.starts_with("--")) {
      args.files.push_back(Widen(argv[i]));
    } else {
      throw std::invalid_argument("unknown option " + arg);
    }
  }
  if (!args.kindGiven || args.files.size() != 2) {
    throw std::invalid_argument(
        "usage: nvtlbgen --win32|--win64 [--leave-out Type.Member[:kind]]... "
        "[--list-after Type.Member=Anchor]... widl.tlb finished.tlb");
  }
  return args;
}

void Generate(const Arguments& args) {
  ComPtr<ITypeLib> source;
  Check(LoadTypeLibEx(args.files[0].c_str(), REGKIND_NONE, &source), "loading widl's library");
  DeleteFileW(args.files[1].c_str());
  ComPtr<ICreateTypeLib2> target;
  Check(CreateTypeLib2(args.kind, args.files[1].c_str(), &target), "CreateTypeLib2");
  nv::typelib::CopyLibrary(source.Get(), target.Get(), args.kind, args.rules);
  Check(target->SaveAllChanges(), "SaveAllChanges");
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Generate(Parse(argc, argv));
    return 0;
  } catch (const nv::typelib::Failure& failure) {
    std::fprintf(stderr, "nvtlbgen: %s failed (0x%08lX)\n", failure.what(), static_cast<unsigned long>(failure.Result()));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "nvtlbgen: %s\n", error.what());
  }
  return 1;
}
