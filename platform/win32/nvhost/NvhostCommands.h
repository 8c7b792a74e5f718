#pragma once
// What nvhost.exe adds to the portable commands, and what they need of the COM plug-in.
#include <windows.h>
#include <oaidl.h>

#include "host/nvhost/Commands.h"
#include "host/nvhost/PluginClient.h"

namespace nv::nvhost {

int RunCallCommand(Session& session, const Words& words);

// The plug-in object behind a client that CreateComPlugin made.
IDispatch& DispatchOf(PluginClient& plugin);

}  // namespace nv::nvhost
