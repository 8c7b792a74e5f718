#include "platform/win32/com/ModuleLifetime.h"

#include <atomic>

namespace nv::com {
namespace {

struct Counts {
  std::atomic<long> objects{0};
  std::atomic<long> locks{0};
};

Counts& ModuleCounts() {
  static Counts counts;
  return counts;
}

}  // namespace

void ObjectCreated() noexcept { ++ModuleCounts().objects; }
void ObjectDestroyed() noexcept { --ModuleCounts().objects; }

void LockModule(bool lock) noexcept {
  if (lock) {
    ++ModuleCounts().locks;
  } else {
    --ModuleCounts().locks;
  }
}

bool ModuleInUse() noexcept { return ModuleCounts().objects != 0 || ModuleCounts().locks != 0; }

HMODULE ThisModule() noexcept {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&ThisModule), &module);
  return module;
}

std::wstring ThisModulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(ThisModule(), path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return {};
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

}  // namespace nv::com
