#pragma once
// The Windows SDK headers of COM and OLE Automation, in the order they need: for code
// outside platform/win32 (the COM suite) that speaks to the server as a client does.
#include <windows.h>
#include <ole2.h>
#include <oleauto.h>
#include <ocidl.h>
#include <olectl.h>
