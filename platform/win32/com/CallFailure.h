#pragma once
// A failing call into another COM object becomes the system's run-time error: the HRESULT
// is its number, the callee's error information its description.
#include <windows.h>

#include "common/Text.h"

namespace nv::com {

[[noreturn]] void ThrowCallFailure(HRESULT hr, TextView member);

inline void CheckCall(HRESULT hr, TextView member) {
  if (FAILED(hr)) ThrowCallFailure(hr, member);
}

}  // namespace nv::com
