#pragma once
// The four host classes of the stand-in, each behind the dual interface the plug-in calls.
#include <windows.h>

namespace nv::standin {

// True when this DLL serves the class.
bool IsStandInClass(REFCLSID classId) noexcept;

// A new object of the class, asked for `iid`; failures are HRESULTs with error information.
HRESULT CreateStandInObject(REFCLSID classId, REFIID iid, void** object) noexcept;

}  // namespace nv::standin
