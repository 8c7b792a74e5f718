#pragma once
// The host's object that the plug-in only hands on (Bouton), kept as the IDispatch the
// host gave, so that the host gets back the very same object.
#include <windows.h>
#include <oaidl.h>
#include <wrl/client.h>

#include "plugin/HostObject.h"

namespace nv::com {

// The empty reference for a null object.
HostObjectRef WrapHostObject(IDispatch* object);

// The object inside a reference made by WrapHostObject; null otherwise.
IDispatch* DispatchOf(const HostObjectRef& reference) noexcept;

}  // namespace nv::com
