#include "store/Registry.h"

#include <algorithm>

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

RegStatus Registry::ReadValueRanges(RegKey key, TextView name, std::uint32_t size, std::span<const ByteRange> ranges,
                                    std::uint8_t* data) {
  class WholeValue final : public ValueSink {
   public:
    void Begin(std::uint32_t, std::uint32_t size) override { bytes.reserve(size); }
    void Append(const std::uint8_t* data, std::uint32_t size) override { bytes.insert(bytes.end(), data, data + size); }
    std::vector<std::uint8_t> bytes;
  } whole;
  if (const RegStatus status = ReadValue(key, name, whole); status != RegError::Success) return status;
  if (whole.bytes.size() != size) return RegError::BadDatabase;
  for (const ByteRange range : ranges) {
    if (range.begin > range.end || range.end > size) return RegError::InvalidParameter;
    std::copy(whole.bytes.begin() + range.begin, whole.bytes.begin() + range.end, data + range.begin);
  }
  return RegError::Success;
}

std::optional<std::uint32_t> ValuePartsSize(ValueParts parts) noexcept {
  std::size_t size = 0;
  for (const std::span<const std::uint8_t> part : parts) {
    if (part.size() > RegLimit::ValueBytes - size) return std::nullopt;
    size += part.size();
  }
  return static_cast<std::uint32_t>(size);
}

RegStatus Registry::SetValueParts(RegKey key, TextView name, std::uint32_t type, ValueParts parts) {
  const std::optional<std::uint32_t> size = ValuePartsSize(parts);
  if (!size) return RegError::InvalidParameter;
  std::vector<std::uint8_t> joined;
  joined.reserve(*size);
  for (const std::span<const std::uint8_t> part : parts) joined.insert(joined.end(), part.begin(), part.end());
  return SetValue(key, name, type, joined.data(), static_cast<std::uint32_t>(joined.size()));
}

}  // namespace nv
