// The values that cross to and from the host's classes: what a VARIANT holds becomes the
// system's value, and a value that has no text is the runtime's error.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "common/Error.h"
#include "platform/win32/com/Bstr.h"
#include "platform/win32/com/VariantValues.h"

namespace nv::comtest {
namespace {

using com::UniqueVariant;

UniqueVariant Make(const std::function<void(VARIANT&)>& fill) {
  UniqueVariant value;
  fill(*value.get());
  return value;
}

TEST(VariantValues, BecomeTheSystemsValues) {
  const com::UniqueBstr held = com::MakeBstr(u"by reference");
  BSTR referenced = held.get();
  struct Case {
    const char* name;
    UniqueVariant given;
    Variant expected;
  };
  Case cases[] = {
      {"empty", UniqueVariant(), Variant()},
      {"text", com::VariantFromText(u"abc"), Variant::FromText(u"abc")},
      {"16-bit", Make([](VARIANT& v) { V_VT(&v) = VT_I2; V_I2(&v) = -7; }), Variant::FromLong(-7)},
      {"32-bit", com::VariantFromLong(70000), Variant::FromLong(70000)},
      {"Boolean", Make([](VARIANT& v) { V_VT(&v) = VT_BOOL; V_BOOL(&v) = VARIANT_TRUE; }), Variant::FromText(u"True")},
      {"text by reference", Make([&](VARIANT& v) { V_VT(&v) = VT_BSTR | VT_BYREF; V_BSTRREF(&v) = &referenced; }),
       Variant::FromText(u"by reference")},
  };
  for (Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(com::ValueOfVariant(*c.given.get()), c.expected);
  }
}

TEST(VariantValues, ValuesWithoutATextOrNumberRaiseTheRuntimesError) {
  struct Case {
    const char* name;
    UniqueVariant given;
    std::function<void(const VARIANT&)> read;
    std::int32_t error;
  };
  const auto text = [](const VARIANT& v) { com::TextOfVariant(v); };
  const auto number = [](const VARIANT& v) { com::LongOfVariant(v); };
  Case cases[] = {
      {"Null as text", Make([](VARIANT& v) { V_VT(&v) = VT_NULL; }), text, 94},
      {"a word as a number", com::VariantFromText(u"twelve"), number, ErrorNumber::TypeMismatch},
      {"too large a number", com::VariantFromText(u"99999999999"), number, ErrorNumber::Overflow},
      {"nothing as text", Make([](VARIANT& v) { V_VT(&v) = VT_DISPATCH; V_DISPATCH(&v) = nullptr; }), text,
       ErrorNumber::TypeMismatch},
  };
  for (Case& c : cases) {
    SCOPED_TRACE(c.name);
    try {
      c.read(*c.given.get());
      ADD_FAILURE() << "no error";
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), c.error);
    }
  }
}

}  // namespace
}  // namespace nv::comtest
