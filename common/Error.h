#pragma once
// The one run-time error of the system: a number in the automation runtime's convention
// (or a COM call's HRESULT) and a description. Only execution catches it.
#include <cstdint>
#include <exception>
#include <string>

#include "common/Text.h"

namespace nv {

namespace ErrorNumber {
constexpr std::int32_t InvalidProcedureCall = 5;
constexpr std::int32_t Overflow = 6;
constexpr std::int32_t SubscriptOutOfRange = 9;
constexpr std::int32_t TypeMismatch = 13;
constexpr std::int32_t ResourceNotFound = 326;
// Interface-defined errors 2000 and 2001 of the host's services, as HRESULTs.
constexpr std::int32_t HostError2000 = static_cast<std::int32_t>(0x800407D0);
constexpr std::int32_t HostError2001 = static_cast<std::int32_t>(0x800407D1);
}  // namespace ErrorNumber

class RuntimeError : public std::exception {
 public:
  RuntimeError(std::int32_t number, Text description);

  std::int32_t Number() const noexcept { return number_; }
  const Text& Description() const noexcept { return description_; }
  const char* what() const noexcept override { return utf8_.c_str(); }

 private:
  std::int32_t number_;
  Text description_;
  std::string utf8_;
};

// The runtime's own description of a numbered error ("Overflow", "Type mismatch" ...).
Text StandardDescription(std::int32_t number);

[[noreturn]] void RaiseError(std::int32_t number);
[[noreturn]] void RaiseError(std::int32_t number, Text description);

}  // namespace nv
