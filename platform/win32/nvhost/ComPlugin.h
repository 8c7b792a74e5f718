#pragma once
// The registered NVextch.dll as a host holds it: created by ProgID, called through the
// vtable of _ExtractionChaine, its Complete events received by an advised sink.
#include <memory>

#include "host/nvhost/PluginClient.h"

namespace nv::nvhost {

// Raises the HRESULT when the server is not registered or cannot be created.
std::unique_ptr<PluginClient> CreateComPlugin();

}  // namespace nv::nvhost
