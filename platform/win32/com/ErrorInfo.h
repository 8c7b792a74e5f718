#pragma once
// How a failure leaves the DLL: the error's HRESULT, with the thread's error information
// (description and source) set for the caller.
#include <windows.h>

#include <cstdint>

#include "common/Error.h"

namespace nv::com {

// The source named in the error information: each module that uses this file defines it.
const wchar_t* ModuleErrorSource() noexcept;

// A run-time error number n is MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, n), as the
// automation runtime reports its errors; a number that already is an HRESULT stays.
HRESULT HResultOf(std::int32_t number) noexcept;
// The inverse, as the automation runtime reads a failure: its own errors by their number,
// any other HRESULT as it is.
std::int32_t RuntimeNumberOf(HRESULT hr) noexcept;

// Sets the thread's error information without allocating anything of ours, so that it
// also serves when memory has run out.
HRESULT ReportError(const ErrorView& error, REFIID interfaceId) noexcept;

// Inside a catch handler: reports whatever was thrown, as CurrentError reads it.
HRESULT ReportCurrentException(REFIID interfaceId) noexcept;

// Runs a member's body; an escaping error becomes its HRESULT with error information.
template <typename Body>
HRESULT Guarded(REFIID interfaceId, Body&& body) noexcept {
  try {
    body();
    return S_OK;
  } catch (...) {
    return ReportCurrentException(interfaceId);
  }
}

}  // namespace nv::com
