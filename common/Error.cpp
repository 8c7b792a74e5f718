#include "common/Error.h"

#include "common/Utf.h"

namespace nv {

RuntimeError::RuntimeError(std::int32_t number, Text description)
    : number_(number), description_(std::move(description)), utf8_(ToUtf8(description_)) {}

Text StandardDescription(std::int32_t number) {
  switch (number) {
    case ErrorNumber::InvalidProcedureCall: return u"Invalid procedure call or argument";
    case ErrorNumber::Overflow: return u"Overflow";
    case ErrorNumber::SubscriptOutOfRange: return u"Subscript out of range";
    case ErrorNumber::TypeMismatch: return u"Type mismatch";
    case ErrorNumber::ResourceNotFound: return u"Resource not found";
    default: return u"Application-defined or object-defined error";
  }
}

void RaiseError(std::int32_t number) { throw RuntimeError(number, StandardDescription(number)); }

void RaiseError(std::int32_t number, Text description) { throw RuntimeError(number, std::move(description)); }

}  // namespace nv
