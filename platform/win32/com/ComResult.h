#pragma once
// Error flow in the manner of WIL: return or throw on a failing HRESULT without an
// if-ladder at every call. A thrown failure is the system's RuntimeError, so that the
// COM boundary reports it like any other error.
#include <windows.h>

#include "common/Error.h"

#define RETURN_IF_FAILED(expr)                                  \
  do {                                                          \
    const HRESULT nv_returnHr_ = (expr);                        \
    if (FAILED(nv_returnHr_)) return nv_returnHr_;              \
  } while (0)

#define RETURN_HR_IF(hr, condition)                             \
  do {                                                          \
    if (condition) return (hr);                                 \
  } while (0)

#define RETURN_HR_IF_NULL(hr, pointer) RETURN_HR_IF((hr), (pointer) == nullptr)

#define THROW_IF_FAILED_MSG(expr, description) ::nv::com::ThrowIfFailed((expr), (description))

namespace nv::com {

// A failing HRESULT becomes the run-time error with that number.
inline void ThrowIfFailed(HRESULT hr, const char16_t* description) {
  if (FAILED(hr)) throw RuntimeError(static_cast<std::int32_t>(hr), description);
}

}  // namespace nv::com
