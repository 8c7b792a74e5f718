#pragma once
// Where nvhost finds its hive: --hive FILE, else $NVEXTCH_HIVE, else
// $XDG_DATA_HOME/nvextch/hive.db, else ~/.local/share/nvextch/hive.db.
#include <string>

namespace nv {

std::string DefaultHivePath();

}  // namespace nv
