#include "host/StoredValue.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

#include "common/LargeBuffer.h"
#include "store/ValueBytes.h"

namespace nv {

namespace {

// A REG_DWORD as its number, anything else as UTF-16LE text. The text's buffer is sized once
// and each piece copied into it while the piece is still in the processor's cache.
class StoredValueSink final : public ValueSink {
 public:
  explicit StoredValueSink(PieceScanner* scanner) : scanner_(scanner) {}

  void Begin(std::uint32_t type, std::uint32_t size) override {
    isNumber_ = type == RegType::Dword && size == 4;
    if (isNumber_) return;
    text_.reserve(LargeBufferCapacity(size / 2 + 1, sizeof(char16_t)) - 1);  // its terminator too
    preparation_.emplace(text_.data(), size);
  }
  void Append(const std::uint8_t* data, std::uint32_t size) override {
    if (isNumber_) {
      std::memcpy(reinterpret_cast<std::uint8_t*>(&number_) + filled_, data, std::min<std::size_t>(size, 4 - filled_));
      filled_ += std::min<std::size_t>(size, 4 - filled_);
      return;
    }
    const std::size_t units = size / 2;  // an odd last byte is no unit
    if (data == room_) {
      room_ = nullptr;  // read in place
    } else if constexpr (std::endian::native == std::endian::little) {
      // Appended straight from the piece: a resize first would write zeros over the same
      // memory just before the copy does.
      if (reinterpret_cast<std::uintptr_t>(data) % alignof(char16_t) == 0) {
        text_.append(reinterpret_cast<const char16_t*>(data), units);
      } else {
        const std::size_t at = text_.size();
        text_.resize(at + units);
        std::memcpy(text_.data() + at, data, units * 2);
      }
    } else {
      text_ += TextFromBytes(data, static_cast<std::uint32_t>(units * 2), 0);
    }
    // All but the last unit, which may be the terminator that is not part of the text.
    if (scanner_ != nullptr && text_.size() > 1) scanner_->Scan(TextView(text_).substr(0, text_.size() - 1));
  }

  std::uint8_t* Room(std::uint32_t size) override {
    if (std::endian::native != std::endian::little || isNumber_ || size % 2 != 0) return nullptr;
    const std::size_t at = text_.size();
    text_.resize(at + size / 2);
    room_ = reinterpret_cast<std::uint8_t*>(text_.data() + at);
    return room_;
  }

  Variant Take() && {
    if (isNumber_) return Variant::FromLong(static_cast<std::int32_t>(LittleEndian32(number_)));
    preparation_.reset();
    if (!text_.empty() && text_.back() == u'\0') text_.pop_back();
    if (scanner_ != nullptr) scanner_->Finish(text_);
    return Variant::FromText(std::move(text_));
  }

 private:
  PieceScanner* scanner_;
  std::uint8_t* room_ = nullptr;
  bool isNumber_ = false;
  std::uint32_t number_ = 0;
  std::size_t filled_ = 0;
  Text text_;
  std::optional<LargeBufferPreparation> preparation_;  // after the text: gone before it
};

}  // namespace

std::optional<Variant> ReadStoredValue(Registry& registry, RegKey key, TextView name, PieceScanner* scanner) {
  StoredValueSink sink(scanner);
  if (registry.ReadValue(key, name, sink) != RegError::Success) return std::nullopt;
  return std::move(sink).Take();
}

RegStatus WriteStoredText(Registry& registry, RegKey key, TextView name, TextView value) {
  if constexpr (std::endian::native == std::endian::little) {
    // The text's own bytes and a terminator after them: a variable of many MiB is not copied.
    static constexpr std::uint8_t kTerminator[2] = {0, 0};
    const std::span<const std::uint8_t> parts[] = {
        {reinterpret_cast<const std::uint8_t*>(value.data()), value.size() * sizeof(char16_t)}, kTerminator};
    return registry.SetValueParts(key, name, RegType::Sz, parts);
  }
  const std::vector<std::uint8_t> data = BytesFromText(value);
  return registry.SetValue(key, name, RegType::Sz, data.data(), static_cast<std::uint32_t>(data.size()));
}

RegStatus WriteStoredNumber(Registry& registry, RegKey key, TextView name, std::uint32_t value) {
  const std::uint32_t data = LittleEndian32(value);
  return registry.SetValue(key, name, RegType::Dword, reinterpret_cast<const std::uint8_t*>(&data), sizeof data);
}

}  // namespace nv
