#include "host/StoredValue.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "common/LargeBuffer.h"
#include "common/Utf.h"
#include "engine/PieceCut.h"
#include "store/ValueBytes.h"

namespace nv {

namespace {

// The four bytes of a REG_DWORD as they arrive, read as its number.
class DwordBytes {
 public:
  void Add(const std::uint8_t* data, std::uint32_t size) {
    const std::size_t taken = std::min<std::size_t>(size, 4 - filled_);
    std::memcpy(reinterpret_cast<std::uint8_t*>(&bytes_) + filled_, data, taken);
    filled_ += taken;
  }
  std::int32_t Value() const { return static_cast<std::int32_t>(LittleEndian32(bytes_)); }

 private:
  std::uint32_t bytes_ = 0;
  std::size_t filled_ = 0;
};

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
      number_.Add(data, size);
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
    if (isNumber_) return Variant::FromLong(number_.Value());
    preparation_.reset();
    if (!text_.empty() && text_.back() == u'\0') text_.pop_back();
    if (scanner_ != nullptr) scanner_->Finish(text_);
    return Variant::FromText(std::move(text_));
  }

 private:
  PieceScanner* scanner_;
  std::uint8_t* room_ = nullptr;
  bool isNumber_ = false;
  DwordBytes number_;
  Text text_;
  std::optional<LargeBufferPreparation> preparation_;  // after the text: gone before it
};

// Gives each piece of a text value to the scanner and keeps none: the text's last unit,
// which may be its terminator, is held back until it is known to be the last. Once the
// scanner has enough, the rest is neither wanted nor scanned.
class ScanningSink final : public ValueSink {
 public:
  explicit ScanningSink(PieceScanner& scanner) : scanner_(scanner) {}

  void Begin(std::uint32_t, std::uint32_t size) override { size_ = size; }
  bool WantsMore() const override { return !scanner_.Enough(); }
  void Append(const std::uint8_t* data, std::uint32_t size) override {
    if (!WantsMore()) return;
    received_ += size;
    if (pending_ == 0 && size % 2 == 0 && reinterpret_cast<std::uintptr_t>(data) % alignof(char16_t) == 0) {
      Scan(TextView(reinterpret_cast<const char16_t*>(data), size / 2));  // as the hive gives them
      return;
    }
    // A byte left over from the piece before goes first; an odd last byte waits for the next.
    aligned_.resize((pending_ + size) / 2);
    const std::size_t used = aligned_.size() * 2 - pending_;
    std::memcpy(reinterpret_cast<std::uint8_t*>(aligned_.data()), odd_, pending_);
    std::memcpy(reinterpret_cast<std::uint8_t*>(aligned_.data()) + pending_, data, used);
    pending_ = size - used;
    if (pending_ != 0) odd_[0] = data[size - 1];
    Scan(aligned_);
  }
  // The units seen, the terminator left out. Short of the value's end, the unit held back
  // is text like any other.
  std::size_t Finish() {
    const bool whole = received_ == size_;
    if (held_ && (last_ != u'\0' || !whole)) scanner_.ScanNext(TextView(&last_, 1));
    return held_ && last_ == u'\0' && whole ? seen_ - 1 : seen_;
  }

 private:
  void Scan(TextView units) {
    if (units.empty()) return;
    if (held_) scanner_.ScanNext(TextView(&last_, 1));
    scanner_.ScanNext(units.substr(0, units.size() - 1));
    last_ = units.back();
    held_ = true;
    seen_ += units.size();
  }

  PieceScanner& scanner_;
  std::size_t size_ = 0;      // bytes, the value's
  std::size_t received_ = 0;  // bytes, those scanned
  std::size_t seen_ = 0;
  Text aligned_;
  std::uint8_t odd_[1] = {};
  std::size_t pending_ = 0;
  char16_t last_ = 0;
  bool held_ = false;
};

// The stretches in byte ranges, sorted and joined where they meet, so that each byte is
// read once.
std::vector<ByteRange> JoinedRanges(std::vector<UnitSpan> spans, std::size_t units) {
  std::sort(spans.begin(), spans.end(), [](const UnitSpan& a, const UnitSpan& b) { return a.begin < b.begin; });
  std::vector<ByteRange> ranges;
  for (const UnitSpan& span : spans) {
    const std::size_t end = std::min(span.end, units);
    if (span.begin >= end) continue;
    const auto begin = static_cast<std::uint32_t>(span.begin * 2);
    if (!ranges.empty() && begin <= ranges.back().end) {
      ranges.back().end = std::max(ranges.back().end, static_cast<std::uint32_t>(end * 2));
    } else {
      ranges.push_back({begin, static_cast<std::uint32_t>(end * 2)});
    }
  }
  return ranges;
}

// The ranges below `limit` bytes, the last one cut there.
void KeepBelow(std::vector<ByteRange>& ranges, std::uint32_t limit) {
  std::erase_if(ranges, [&](const ByteRange& range) { return range.begin >= limit; });
  if (!ranges.empty()) ranges.back().end = std::min(ranges.back().end, limit);
}

// The end of a long value read to join its start: a stretch that doubles from the value's end
// until it holds the separators the scanner needs from there and one more, of which the
// units after that one are moved to `start`, where the start the scanner kept ends. The text
// is then as long as the two. False when the stretch would reach the start: the value is
// then better read whole.
constexpr std::size_t kFirstTailUnits = 64 * 1024;

bool JoinTail(Registry& registry, RegKey key, TextView name, std::uint32_t size, PieceScanner& scanner,
              std::size_t start, PartlyReadText& text) {
  const std::size_t valueUnits = size / 2;
  auto* const bytes = reinterpret_cast<std::uint8_t*>(text.Data());
  std::size_t textUnits = valueUnits;  // without the terminator, once the last unit is read
  std::size_t read = valueUnits;       // where the units read so far begin
  for (std::size_t length = kFirstTailUnits;; length *= 2) {
    const std::size_t from = valueUnits > length ? valueUnits - length : 0;
    if (from <= start) return false;
    const ByteRange fresh{static_cast<std::uint32_t>(from * 2), static_cast<std::uint32_t>(read * 2)};
    if (registry.ReadValueRanges(key, name, size, std::span(&fresh, 1), bytes) != RegError::Success) return false;
    if (read == valueUnits && text.Data()[valueUnits - 1] == u'\0') textUnits = valueUnits - 1;
    read = from;
    const PieceCut cut(TextView(text.Data() + from, textUnits - from), scanner.Separator());
    if (cut.LastIndex() <= scanner.LastNeeded()) continue;
    const TextView boundary = cut.Piece(cut.LastIndex() - scanner.LastNeeded() - 1);
    const auto tail = static_cast<std::size_t>(boundary.data() + boundary.size() - text.Data());
    std::memmove(text.Data() + start, text.Data() + tail, (textUnits - tail) * sizeof(char16_t));
    text.ShrinkTo(start + textUnits - tail);
    scanner.ScanNext(text.View().substr(start));
    scanner.FinishParts(text.View());
    return true;
  }
}

// Converts each piece as it comes, through one buffer. The last unit read is held back, as
// it may be the terminator, and so is a high surrogate before it, whose pair may be in the
// next piece; an odd byte waits for the byte after it.
class Utf8WritingSink final : public ValueSink {
 public:
  Utf8WritingSink(Utf8Output& out, Utf8Encoder encode) : out_(out), encode_(encode) {}

  void Begin(std::uint32_t type, std::uint32_t size) override {
    isNumber_ = type == RegType::Dword && size == 4;
    out_.Write({});
  }
  void Append(const std::uint8_t* data, std::uint32_t size) override {
    if (isNumber_) {
      number_.Add(data, size);
      return;
    }
    if (data == room_) {  // read in place, after the units held back
      room_ = nullptr;
      WriteAllButHeld();
      return;
    }
    const std::size_t held = units_.size();
    const std::size_t count = (pending_ + size) / 2;
    units_.resize(held + count);
    auto* to = reinterpret_cast<std::uint8_t*>(units_.data() + held);
    std::memcpy(to, &odd_, pending_);
    std::memcpy(to + pending_, data, count * 2 - pending_);
    if constexpr (std::endian::native != std::endian::little) {
      for (char16_t& unit : TextSpan(units_.data() + held, count)) unit = static_cast<char16_t>((unit >> 8) | (unit << 8));
    }
    pending_ = pending_ + size - count * 2;
    if (pending_ != 0) odd_ = data[size - 1];
    WriteAllButHeld();
  }
  std::uint8_t* Room(std::uint32_t size) override {
    if (std::endian::native != std::endian::little || isNumber_ || size % 2 != 0 || pending_ != 0) return nullptr;
    const std::size_t held = units_.size();
    units_.resize(held + size / 2);
    room_ = reinterpret_cast<std::uint8_t*>(units_.data() + held);
    return room_;
  }
  // The units held back, the terminator left out, and a number written as its digits.
  void Finish() {
    if (isNumber_) {
      const Text digits = DecimalText(number_.Value());
      bytes_.clear();
      encode_(digits, bytes_);
      out_.Write(bytes_);
      return;
    }
    if (!units_.empty() && units_.back() == u'\0') units_.pop_back();
    WriteUnits(units_.size());
  }

 private:
  using TextSpan = std::span<char16_t>;
  static bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
  void WriteAllButHeld() {
    std::size_t keep = std::min<std::size_t>(units_.size(), 1);
    if (units_.size() >= 2 && IsHighSurrogate(units_[units_.size() - 2])) keep = 2;
    WriteUnits(units_.size() - keep);
  }
  // Writes the first `count` units and keeps the rest for the next piece.
  void WriteUnits(std::size_t count) {
    if (count == 0) return;
    bytes_.clear();
    encode_(TextView(units_).substr(0, count), bytes_);
    out_.Write(bytes_);
    units_.erase(0, count);
  }

  Utf8Output& out_;
  Utf8Encoder encode_;
  bool isNumber_ = false;
  DwordBytes number_;
  Text units_;
  std::uint8_t* room_ = nullptr;
  std::string bytes_;
  std::uint8_t odd_ = 0;
  std::size_t pending_ = 0;
};

// A stored text's terminator, and its units as they lie in memory, which on a little-endian
// machine are already the bytes the registry stores.
constexpr std::uint8_t kTerminator[2] = {0, 0};
std::span<const std::uint8_t> OwnBytes(TextView units) noexcept {
  return {reinterpret_cast<const std::uint8_t*>(units.data()), units.size() * sizeof(char16_t)};
}

}  // namespace

std::optional<PartlyReadText> ReadStoredTextPartly(Registry& registry, RegKey key, TextView name,
                                                   PieceScanner& scanner, const StretchSelector& select) {
  if (std::endian::native != std::endian::little || !registry.ReadsValuesInPieces()) return std::nullopt;
  const ReadingScope reading(registry);  // the scan and the stretches read from one state of the value
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  if (registry.QueryValue(key, name, &type, nullptr, &size) != RegError::Success) return std::nullopt;
  if (size < kPartlyReadBytes || (type == RegType::Dword && size == 4)) return std::nullopt;
  ScanningSink sink(scanner);
  if (registry.ReadValue(key, name, sink) != RegError::Success) return std::nullopt;
  const std::size_t seen = sink.Finish();
  std::optional<PartlyReadText> text;
  std::size_t start = seen;  // the units, from the first, that lie where they lie in the value
  if (scanner.LastNeeded() > 0 && scanner.Enough()) {
    start = scanner.ResumeAfterLastSeparator();
    text.emplace(size / 2);
    if (!JoinTail(registry, key, name, size, scanner, start, *text)) return std::nullopt;
  } else {
    text.emplace(seen);
    scanner.FinishParts(text->View());
  }
  if (!scanner.SawWhole(text->View())) return std::nullopt;  // a cut would scan units never read
  std::vector<ByteRange> ranges = JoinedRanges(select(text->View(), scanner), text->View().size());
  KeepBelow(ranges, static_cast<std::uint32_t>(start * 2));  // the end joined to it is read already
  // The value's bytes and the text's units lie at the same offsets.
  if (registry.ReadValueRanges(key, name, size, ranges, reinterpret_cast<std::uint8_t*>(text->Data())) !=
      RegError::Success) {
    return std::nullopt;
  }
  return text;
}

std::optional<Variant> ReadStoredValue(Registry& registry, RegKey key, TextView name, PieceScanner* scanner) {
  StoredValueSink sink(scanner);
  if (registry.ReadValue(key, name, sink) != RegError::Success) return std::nullopt;
  return std::move(sink).Take();
}

RegStatus WriteStoredValueAsUtf8(Registry& registry, RegKey key, TextView name, Utf8Output& out,
                                 Utf8Encoder encode) {
  Utf8WritingSink sink(out, encode);
  const RegStatus status = registry.ReadValue(key, name, sink);
  if (status == RegError::Success) sink.Finish();
  return status;
}

RegStatus WriteStoredText(Registry& registry, RegKey key, TextView name, TextView value) {
  if constexpr (std::endian::native == std::endian::little) {
    // The text's own bytes and a terminator after them: a variable of many MiB is not copied.
    const std::span<const std::uint8_t> parts[] = {OwnBytes(value), kTerminator};
    return registry.SetValueParts(key, name, RegType::Sz, parts);
  }
  const std::vector<std::uint8_t> data = BytesFromText(value);
  return registry.SetValue(key, name, RegType::Sz, data.data(), static_cast<std::uint32_t>(data.size()));
}

RegStatus WriteStoredTextMade(Registry& registry, RegKey key, TextView name, std::size_t units, const TextMaker& make) {
  if (units >= RegLimit::ValueBytes / 2) return RegError::InvalidParameter;
  const auto size = static_cast<std::uint32_t>((units + 1) * 2);  // with the terminator
  return registry.SetValueMade(key, name, RegType::Sz, size, [&](const ValueBytesSink& bytes) {
    make([&](TextView piece) {
      if constexpr (std::endian::native == std::endian::little) {
        bytes(OwnBytes(piece));
      } else {
        const std::vector<std::uint8_t> data = BytesFromText(piece);
        bytes(std::span(data).first(data.size() - 2));
      }
    });
    bytes(kTerminator);
  });
}

RegStatus WriteStoredNumber(Registry& registry, RegKey key, TextView name, std::uint32_t value) {
  const std::uint32_t data = LittleEndian32(value);
  return registry.SetValue(key, name, RegType::Dword, reinterpret_cast<const std::uint8_t*>(&data), sizeof data);
}

}  // namespace nv
