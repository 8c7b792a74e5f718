#include "host/WriteWatchingRegistry.h"

#include "common/CaseMapping.h"

namespace nv {
namespace {

constexpr std::size_t kKept = 16;

}  // namespace

RegStatus WriteWatchingRegistry::SetValue(RegKey key, TextView name, std::uint32_t type, const std::uint8_t* data,
                                          std::uint32_t size) {
  const RegStatus status = inner_.SetValue(key, name, type, data, size);
  if (status != RegError::Success) {
    if (failed_.size() == kKept) failed_.erase(failed_.begin());
    // Small values only: what a command reports is a status or a short text.
    failed_.push_back({Text(name), type, std::vector<std::uint8_t>(data, data + (data == nullptr ? 0 : std::min<std::uint32_t>(size, 256))), status});
  }
  return status;
}

std::optional<WriteWatchingRegistry::FailedWrite> WriteWatchingRegistry::LastFailedWrite(TextView name) const {
  const Text wanted = UpperCase(name);
  for (auto failed = failed_.rbegin(); failed != failed_.rend(); ++failed) {
    if (UpperCase(failed->name) == wanted) return *failed;
  }
  return std::nullopt;
}

}  // namespace nv
