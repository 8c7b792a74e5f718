#pragma once
// The type library embedded in this DLL, and the descriptions that dispatch uses.
#include <windows.h>
#include <oaidl.h>
#include <wrl/client.h>

namespace nv::com {

struct PluginTypeInfo {
  Microsoft::WRL::ComPtr<ITypeInfo> dispatchSide;  // what GetTypeInfo hands out
  Microsoft::WRL::ComPtr<ITypeInfo> vtableSide;    // what Invoke calls through: members at their slots
  Microsoft::WRL::ComPtr<ITypeInfo> coclass;
};

// Raises a run-time error carrying the HRESULT when the library cannot be read.
Microsoft::WRL::ComPtr<ITypeLib> LoadEmbeddedTypeLib();
PluginTypeInfo LoadPluginTypeInfo();

}  // namespace nv::com
