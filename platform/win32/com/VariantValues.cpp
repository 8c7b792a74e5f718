#include "platform/win32/com/VariantValues.h"

#include "common/Error.h"
#include "platform/win32/com/Bstr.h"

namespace nv::com {
namespace {

[[noreturn]] void ThrowFor(HRESULT hr) {
  RaiseError(hr == DISP_E_OVERFLOW ? ErrorNumber::Overflow : ErrorNumber::TypeMismatch);
}

}  // namespace

UniqueVariant VariantFromText(TextView text) {
  UniqueVariant value;
  V_BSTR(value.get()) = MakeBstr(text).release();
  V_VT(value.get()) = VT_BSTR;
  return value;
}

UniqueVariant VariantFromLong(std::int32_t number) {
  UniqueVariant value;
  V_VT(value.get()) = VT_I4;
  V_I4(value.get()) = number;
  return value;
}

UniqueVariant LeftOutVariant() {
  UniqueVariant value;
  V_VT(value.get()) = VT_ERROR;
  V_ERROR(value.get()) = DISP_E_PARAMNOTFOUND;
  return value;
}

UniqueVariant VariantFromValue(const Variant& value) {
  if (value.IsLong()) return VariantFromLong(value.LongValue());
  if (value.IsText()) return VariantFromText(value.TextValue());
  return UniqueVariant();
}

Variant ValueOfVariant(const VARIANT& given) {
  // A value handed by reference is read where it points.
  UniqueVariant copied;
  if ((V_VT(&given) & VT_BYREF) != 0 && FAILED(VariantCopyInd(copied.get(), const_cast<VARIANT*>(&given)))) {
    RaiseError(ErrorNumber::TypeMismatch);
  }
  const VARIANT& value = (V_VT(&given) & VT_BYREF) != 0 ? *copied.get() : given;
  switch (V_VT(&value)) {
    case VT_EMPTY:
      return Variant();
    case VT_BSTR:
      return Variant::FromText(TextOf(V_BSTR(&value)));
    case VT_I1:
    case VT_UI1:
    case VT_I2:
    case VT_UI2:
    case VT_I4:
    case VT_INT:
      return Variant::FromLong(LongOfVariant(value));
    default:
      return Variant::FromText(TextOfVariant(value));
  }
}

Text TextOfVariant(const VARIANT& value) {
  if (V_VT(&value) == VT_EMPTY) return {};
  if (V_VT(&value) == VT_NULL) RaiseError(ErrorNumber::InvalidUseOfNull);
  if (V_VT(&value) == VT_BSTR) return TextOf(V_BSTR(&value));
  UniqueVariant text;
  const HRESULT hr = VariantChangeTypeEx(text.get(), const_cast<VARIANT*>(&value), LOCALE_USER_DEFAULT,
                                         VARIANT_ALPHABOOL, VT_BSTR);
  if (FAILED(hr)) ThrowFor(hr);
  return TextOf(V_BSTR(text.get()));
}

std::int32_t LongOfVariant(const VARIANT& value) {
  if (V_VT(&value) == VT_I4) return V_I4(&value);
  UniqueVariant number;
  const HRESULT hr = VariantChangeTypeEx(number.get(), const_cast<VARIANT*>(&value), LOCALE_USER_DEFAULT, 0, VT_I4);
  if (FAILED(hr)) ThrowFor(hr);
  return V_I4(number.get());
}

}  // namespace nv::com
