#include "host/WriteWatchingRegistry.h"

#include "common/CaseMapping.h"

namespace nv {
namespace {

constexpr std::size_t kKept = 16;

}  // namespace

RegStatus WriteWatchingRegistry::SetValue(RegKey key, TextView name, std::uint32_t type, const std::uint8_t* data,
                                          std::uint32_t size) {
  const RegStatus status = inner_.SetValue(key, name, type, data, size);
  Remember(name, type, {data, data == nullptr ? 0 : size}, status);
  return status;
}

RegStatus WriteWatchingRegistry::SetValueParts(RegKey key, TextView name, std::uint32_t type, ValueParts parts) {
  const RegStatus status = inner_.SetValueParts(key, name, type, parts);
  Remember(name, type, parts.empty() ? std::span<const std::uint8_t>() : parts.front(), status);
  return status;
}

RegStatus WriteWatchingRegistry::SetValueMade(RegKey key, TextView name, std::uint32_t type, std::uint32_t size,
                                              const ValueMaker& make) {
  const RegStatus status = inner_.SetValueMade(key, name, type, size, make);
  Remember(name, type, {}, status);  // its data is gone by now
  return status;
}

void WriteWatchingRegistry::Remember(TextView name, std::uint32_t type, std::span<const std::uint8_t> data,
                                     RegStatus status) {
  if (status == RegError::Success) return;
  if (failed_.size() == kKept) failed_.erase(failed_.begin());
  // Small values only: what a command reports is a status or a short text.
  const std::span<const std::uint8_t> kept = data.first(std::min<std::size_t>(data.size(), 256));
  failed_.push_back({Text(name), type, std::vector<std::uint8_t>(kept.begin(), kept.end()), status});
}

std::optional<WriteWatchingRegistry::FailedWrite> WriteWatchingRegistry::LastFailedWrite(TextView name) const {
  const Text wanted = UpperCase(name);
  for (auto failed = failed_.rbegin(); failed != failed_.rend(); ++failed) {
    if (UpperCase(failed->name) == wanted) return *failed;
  }
  return std::nullopt;
}

}  // namespace nv
