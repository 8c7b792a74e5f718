#include "common/Error.h"

#include <new>

#include "common/Utf.h"

namespace nv {

RuntimeError::RuntimeError(std::int32_t number, Text description)
    : number_(number), description_(std::move(description)), utf8_(ToUtf8(description_)) {}

TextView StandardDescription(std::int32_t number) noexcept {
  switch (number) {
    case ErrorNumber::InvalidProcedureCall: return u"Invalid procedure call or argument";
    case ErrorNumber::Overflow: return u"Overflow";
    case ErrorNumber::OutOfMemory: return u"Out of memory";
    case ErrorNumber::SubscriptOutOfRange: return u"Subscript out of range";
    case ErrorNumber::TypeMismatch: return u"Type mismatch";
    case ErrorNumber::InternalError: return u"Internal error";
    case ErrorNumber::InvalidUseOfNull: return u"Invalid use of Null";
    case ErrorNumber::ResourceNotFound: return u"Resource not found";
    default: return u"Application-defined or object-defined error";
  }
}

ErrorView CurrentError() noexcept {
  try {
    throw;
  } catch (const RuntimeError& error) {
    return error.View();
  } catch (const std::bad_alloc&) {
    return {ErrorNumber::OutOfMemory, StandardDescription(ErrorNumber::OutOfMemory)};
  } catch (...) {
    return {ErrorNumber::InternalError, StandardDescription(ErrorNumber::InternalError)};
  }
}

void RaiseError(std::int32_t number) { throw RuntimeError(number, Text(StandardDescription(number))); }

void RaiseError(std::int32_t number, Text description) { throw RuntimeError(number, std::move(description)); }

}  // namespace nv
