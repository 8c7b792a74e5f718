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
  if (!RangesWithin(ranges, size)) return RegError::InvalidParameter;
  std::vector<std::uint8_t> whole(size);
  std::uint32_t read = size;
  const RegStatus status = QueryValue(key, name, nullptr, whole.data(), &read);
  if (status == RegError::MoreData || (status == RegError::Success && read != size)) return RegError::BadDatabase;
  if (status != RegError::Success) return status;
  for (const ByteRange range : ranges)
    std::copy(whole.begin() + range.begin, whole.begin() + range.end, data + range.begin);
  return RegError::Success;
}

bool RangesWithin(std::span<const ByteRange> ranges, std::uint32_t size) noexcept {
  return std::all_of(ranges.begin(), ranges.end(),
                     [size](const ByteRange range) { return range.begin <= range.end && range.end <= size; });
}

std::optional<std::uint32_t> ValuePartsSize(ValueParts parts) noexcept {
  std::size_t size = 0;
  for (const std::span<const std::uint8_t> part : parts) {
    if (part.size() > RegLimit::ValueBytes - size) return std::nullopt;
    size += part.size();
  }
  return static_cast<std::uint32_t>(size);
}

ValueMaker PartsMaker(ValueParts parts) {
  return [parts](const ValueBytesSink& sink) {
    for (const std::span<const std::uint8_t> part : parts) sink(part);
  };
}

RegStatus Registry::SetValueParts(RegKey key, TextView name, std::uint32_t type, ValueParts parts) {
  const std::optional<std::uint32_t> size = ValuePartsSize(parts);
  if (!size) return RegError::InvalidParameter;
  return SetValueMade(key, name, type, *size, PartsMaker(parts));
}

RegStatus Registry::SetValueMade(RegKey key, TextView name, std::uint32_t type, std::uint32_t size,
                                 const ValueMaker& make) {
  std::vector<std::uint8_t> data;
  data.reserve(size);
  bool over = false;
  make([&](std::span<const std::uint8_t> piece) {
    over = over || piece.size() > size - data.size();
    if (!over) data.insert(data.end(), piece.begin(), piece.end());
  });
  if (over || data.size() != size) return RegError::InvalidParameter;
  return SetValue(key, name, type, data.data(), size);
}

}  // namespace nv
