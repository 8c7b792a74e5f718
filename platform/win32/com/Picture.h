#pragma once
// Pictures made from the DLL's bitmap resources.
#include <windows.h>
#include <ocidl.h>
#include <wrl/client.h>

namespace nv::com {

// A new picture object that owns a new bitmap loaded from the resource `name`; a missing
// resource is the resource-not-found error.
Microsoft::WRL::ComPtr<IPictureDisp> LoadBitmapPicture(const wchar_t* name);

}  // namespace nv::com
