#pragma once
// Hands the core what it needs from Windows before the first plug-in object exists: the
// real registry and the host's services reached through COM.
namespace nv::com {

void AttachCoreToWindows();

}  // namespace nv::com
