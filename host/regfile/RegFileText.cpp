#include "host/regfile/RegFileText.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "common/Utf.h"
#include "host/regfile/RegFile.h"

namespace nv {
namespace {

constexpr TextView kVersion5Header = u"Windows Registry Editor Version 5.00";
constexpr TextView kRegedit4Header = u"REGEDIT4";
constexpr std::size_t kChunk = 1 << 16;
// Above this, the room a long line needed is given back once the line is read.
constexpr std::size_t kKeptCapacity = 1 << 22;

TextView TrimEnd(TextView line) {
  while (!line.empty() && (line.back() == u' ' || line.back() == u'\t')) line.remove_suffix(1);
  return line;
}

}  // namespace

std::size_t RegBytesInMemory::Read(char* buffer, std::size_t size) {
  const std::size_t n = std::min(size, bytes_.size());
  std::memcpy(buffer, bytes_.data(), n);
  bytes_.remove_prefix(n);
  return n;
}

RegLineReader::RegLineReader(RegByteSource& source) : source_(source), buffer_(kChunk) {
  while (end_ - begin_ < 3 && Fill()) {
  }
  const std::string_view start(buffer_.data() + begin_, end_ - begin_);
  if (start.starts_with("\xFF\xFE")) {
    utf16_ = true;
    begin_ += 2;
  } else if (start.starts_with("\xFE\xFF")) {
    throw RegFileError(1, "UTF-16 big-endian files are not supported (regedit writes little-endian)");
  } else if (start.starts_with("\xEF\xBB\xBF")) {
    begin_ += 3;
  }
  Text header;
  bool read = false;
  try {
    read = Next(header);
  } catch (const RegFileError&) {
    // Not even text: said below as what it is not.
  }
  const TextView trimmed = read ? TrimEnd(header) : TextView();
  if (trimmed == kVersion5Header) {
    format_ = RegFileFormat::Version5;
  } else if (trimmed == kRegedit4Header && !utf16_) {
    format_ = RegFileFormat::Regedit4;
  } else {
    throw RegFileError(1,
                       "not a registry file: the first line must be \"Windows Registry Editor Version 5.00\""
                       " or \"REGEDIT4\" (REGEDIT4 files are ANSI, never UTF-16)");
  }
  lineNumber_ = 1;
}

// Keeps the bytes not yet used at the front of the buffer and reads more behind them.
bool RegLineReader::Fill() {
  if (atEnd_) return false;
  if (begin_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  if (buffer_.size() - end_ < kChunk / 2) buffer_.resize(end_ + kChunk);
  const std::size_t n = source_.Read(buffer_.data() + end_, buffer_.size() - end_);
  if (n == 0) {
    atEnd_ = true;
    return false;
  }
  end_ += n;
  return true;
}

void RegLineReader::Decode(std::string_view raw, std::size_t number, Text& line) {
  if (utf16_) {
    const std::size_t old = line.size();
    line.resize(old + raw.size() / 2);
    if constexpr (std::endian::native == std::endian::little) {
      std::memcpy(line.data() + old, raw.data(), raw.size() / 2 * 2);  // the file's units as they lie
      return;
    }
    for (std::size_t i = 0; i < raw.size() / 2; ++i) {
      line[old + i] = static_cast<char16_t>(static_cast<unsigned char>(raw[2 * i]) |
                                            static_cast<unsigned char>(raw[2 * i + 1]) << 8);
    }
  } else if (IsStandardUtf8(raw)) {
    line += FromUtf8(raw);
  } else if (format_ == RegFileFormat::Regedit4) {
    line += FromCp1252(raw);  // an ANSI file may be either
  } else {
    throw RegFileError(number, "the line is not valid UTF-8 (a version 5 file that is not UTF-16 must be UTF-8)");
  }
}

// A long line is decoded a piece at a time as it is read, so that its bytes and its text are
// never both held whole. A UTF-8 piece ends after an ASCII byte, never inside a sequence.
bool RegLineReader::Next(Text& line) {
  const std::size_t step = utf16_ ? 2 : 1;
  const std::size_t number = lineNumber_ + 1;
  if (line.capacity() > kKeptCapacity) Text().swap(line);
  line.clear();
  bool any = false;
  std::size_t scanned = begin_;
  for (;;) {
    while (scanned + step <= end_) {
      // memchr finds a candidate byte far faster than a loop; in UTF-16 it must begin a unit
      // and be followed by a zero.
      const void* found = std::memchr(buffer_.data() + scanned, '\n', end_ - scanned);
      if (found == nullptr) {
        scanned = end_ - (end_ - begin_) % step;  // every whole unit looked at
        break;
      }
      const std::size_t at = static_cast<std::size_t>(static_cast<const char*>(found) - buffer_.data());
      if (utf16_ && (at - begin_) % 2 != 0) {
        scanned = at + 1;  // the high byte of a unit: the next unit starts after it
        continue;
      }
      scanned = at;
      if (scanned + step > end_) break;  // its high byte is not read yet: looked at again after Fill
      if (!utf16_ || buffer_[scanned + 1] == '\0') {
        Decode(std::string_view(buffer_.data() + begin_, scanned - begin_), number, line);
        begin_ = scanned + step;
        while (!line.empty() && line.back() == u'\r') line.pop_back();
        lineNumber_ = number;
        return true;
      }
      scanned += step;  // in UTF-16, a unit whose low byte only is a line feed
    }
    if (scanned - begin_ >= kChunk) {
      std::size_t cut = scanned;
      if (!utf16_) {
        while (cut > begin_ && static_cast<unsigned char>(buffer_[cut - 1]) >= 0x80) --cut;
      }
      if (cut > begin_) {
        Decode(std::string_view(buffer_.data() + begin_, cut - begin_), number, line);
        begin_ = cut;
        any = true;
      }
    }
    const std::size_t offset = scanned - begin_;
    if (!Fill()) break;
    scanned = begin_ + offset;
  }
  if (begin_ == end_ && !any) return false;
  if (utf16_ && (end_ - begin_) % 2 != 0)
    throw RegFileError(number, "the file is UTF-16 but has an odd number of bytes");
  Decode(std::string_view(buffer_.data() + begin_, end_ - begin_), number, line);
  begin_ = end_;
  while (!line.empty() && line.back() == u'\r') line.pop_back();
  lineNumber_ = number;
  return true;
}

std::vector<std::uint8_t> Utf16Bytes(TextView text, bool terminated) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(2 * text.size() + 2);
  for (const char16_t unit : text) {
    bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
    bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
  }
  if (terminated) bytes.insert(bytes.end(), {0, 0});
  return bytes;
}

std::vector<std::uint8_t> AnsiToUtf16Bytes(std::span<const std::uint8_t> ansi) {
  const std::string_view bytes(reinterpret_cast<const char*>(ansi.data()), ansi.size());
  return Utf16Bytes(IsUtf8(bytes) ? FromUtf8(bytes) : FromCp1252(bytes), false);
}

}  // namespace nv
