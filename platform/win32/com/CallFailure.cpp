#include "platform/win32/com/CallFailure.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <cstdint>
#include <cstdio>

#include "common/Error.h"
#include "platform/win32/com/Bstr.h"

namespace nv::com {
namespace {

// The callee's description, taken from the thread (which clears it); empty when it gave none.
Text TakeDescription() {
  Microsoft::WRL::ComPtr<IErrorInfo> info;
  if (GetErrorInfo(0, &info) != S_OK || !info) return {};
  UniqueBstr description;
  if (FAILED(info->GetDescription(description.put()))) return {};
  return TextOf(description.get());
}

}  // namespace

void ThrowCallFailure(HRESULT hr, TextView member) {
  Text description = TakeDescription();
  if (description.empty()) {
    char code[16];
    std::snprintf(code, sizeof code, "%08lX", static_cast<unsigned long>(hr));
    description = Text(member) + u" failed (HRESULT 0x";
    for (const char* c = code; *c != '\0'; ++c) description.push_back(static_cast<char16_t>(*c));
    description += u")";
  }
  throw RuntimeError(static_cast<std::int32_t>(hr), std::move(description));
}

}  // namespace nv::com
