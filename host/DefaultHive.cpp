#include "host/DefaultHive.h"

#include <cstdlib>

namespace nv {
namespace {

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

}  // namespace

std::string DefaultHivePath() {
  if (auto hive = Environment("NVEXTCH_HIVE"); !hive.empty()) return hive;
  if (auto data = Environment("XDG_DATA_HOME"); !data.empty()) return data + "/nvextch/hive.db";
  if (auto home = Environment("HOME"); !home.empty()) return home + "/.local/share/nvextch/hive.db";
  return ".local/share/nvextch/hive.db";
}

}  // namespace nv
