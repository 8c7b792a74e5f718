#include "store/Registry.h"

namespace nv {

RegStatus Registry::ReadValue(RegKey key, TextView name, ValueSink& sink) {
  const ReadingScope reading(*this);
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  RegStatus status = QueryValue(key, name, &type, nullptr, &size);
  std::vector<std::uint8_t> data;
  // Another writer may make the value larger between the two queries.
  while (status == RegError::Success) {
    data.resize(size);
    status = QueryValue(key, name, &type, data.data(), &size);
    if (status != RegError::MoreData) break;
    status = RegError::Success;
  }
  if (status != RegError::Success) return status;
  sink.Begin(type, size);
  sink.Append(data.data(), size);
  return RegError::Success;
}

}  // namespace nv
