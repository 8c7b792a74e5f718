#pragma once
// The one run-time error of the system: a number in the automation runtime's convention
// (or a COM call's HRESULT) and a description. Only execution catches it; it and the COM
// layer turn whatever they catch into an error through CurrentError.
#include <cstdint>
#include <exception>
#include <string>

#include "common/Text.h"

namespace nv {

namespace ErrorNumber {
constexpr std::int32_t InvalidProcedureCall = 5;
constexpr std::int32_t Overflow = 6;
constexpr std::int32_t OutOfMemory = 7;
constexpr std::int32_t SubscriptOutOfRange = 9;
constexpr std::int32_t TypeMismatch = 13;
constexpr std::int32_t InternalError = 51;
constexpr std::int32_t InvalidUseOfNull = 94;
constexpr std::int32_t ResourceNotFound = 326;
// Interface-defined errors 2000 and 2001 of the host's services, as HRESULTs.
constexpr std::int32_t HostError2000 = static_cast<std::int32_t>(0x800407D0);
constexpr std::int32_t HostError2001 = static_cast<std::int32_t>(0x800407D1);
}  // namespace ErrorNumber

// An error while it is being handled: its number and a view of its description, which
// lives as long as the handler that caught it.
struct ErrorView {
  std::int32_t number;
  TextView description;
};

class RuntimeError : public std::exception {
 public:
  RuntimeError(std::int32_t number, Text description);

  std::int32_t Number() const noexcept { return number_; }
  const Text& Description() const noexcept { return description_; }
  ErrorView View() const noexcept { return {number_, description_}; }
  const char* what() const noexcept override { return utf8_.c_str(); }

 private:
  std::int32_t number_;
  Text description_;
  std::string utf8_;
};

// The runtime's own description of a numbered error ("Overflow", "Type mismatch" ...).
TextView StandardDescription(std::int32_t number) noexcept;

// Inside a catch handler: the error that the exception being handled stands for. A
// run-time error as it is; an allocation failure is OutOfMemory and any other exception
// InternalError, each with the runtime's description. It allocates nothing, so that it
// serves on the out-of-memory path too.
ErrorView CurrentError() noexcept;

[[noreturn]] void RaiseError(std::int32_t number);
[[noreturn]] void RaiseError(std::int32_t number, Text description);

}  // namespace nv
