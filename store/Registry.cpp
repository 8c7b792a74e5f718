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

RegStatus Registry::SetValueParts(RegKey key, TextView name, std::uint32_t type, ValueParts parts) {
  std::vector<std::uint8_t> joined;
  for (const std::span<const std::uint8_t> part : parts) {
    if (part.size() > RegLimit::ValueBytes - joined.size()) return RegError::InvalidParameter;
    joined.insert(joined.end(), part.begin(), part.end());
  }
  return SetValue(key, name, type, joined.data(), static_cast<std::uint32_t>(joined.size()));
}

}  // namespace nv
