#pragma once
// The host's catalogue of task types as the plug-in uses it: title and summary of a type.
#include <cstdint>

#include "common/Text.h"

namespace nv {

class WrapperCatalog {
 public:
  virtual ~WrapperCatalog() = default;
  virtual Text GetWrapperTitle(std::int16_t wrapperType) = 0;
  virtual Text GetWrapperSummary(std::int16_t wrapperType) = 0;
};

}  // namespace nv
