#pragma once
// A value of variable type as the plug-in meets it: registry reads and host variables.
#include <cstdint>
#include <utility>

#include "common/Text.h"

namespace nv {

class Variant {
 public:
  enum class Kind { Empty, Long, String };

  Variant() = default;
  static Variant FromLong(std::int32_t value) { return Variant(Kind::Long, value, {}); }
  static Variant FromText(Text value) { return Variant(Kind::String, 0, std::move(value)); }

  Kind GetKind() const noexcept { return kind_; }
  bool IsEmpty() const noexcept { return kind_ == Kind::Empty; }
  bool IsLong() const noexcept { return kind_ == Kind::Long; }
  bool IsText() const noexcept { return kind_ == Kind::String; }
  std::int32_t LongValue() const noexcept { return long_; }
  const Text& TextValue() const noexcept { return text_; }
  Text TakeText() && noexcept { return std::move(text_); }

  // The test `value = ""`: true for Empty and for the empty text, false for any number.
  bool IsEmptyText() const noexcept { return kind_ == Kind::Empty || (kind_ == Kind::String && text_.empty()); }

  friend bool operator==(const Variant&, const Variant&) = default;

 private:
  Variant(Kind kind, std::int32_t number, Text text) : kind_(kind), long_(number), text_(std::move(text)) {}

  Kind kind_ = Kind::Empty;
  std::int32_t long_ = 0;
  Text text_;
};

}  // namespace nv
