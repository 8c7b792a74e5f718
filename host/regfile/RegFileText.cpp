#include "host/regfile/RegFileText.h"

#include <algorithm>
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
  std::string_view raw;
  if (!NextRawLine(raw)) raw = {};
  lineNumber_ = 1;
  Text header;
  if (utf16_) {
    Decode(raw, header);
  } else {
    header = FromUtf8(raw);
    while (!header.empty() && header.back() == u'\r') header.pop_back();
  }
  const TextView trimmed = TrimEnd(header);
  if (trimmed == kVersion5Header) {
    format_ = RegFileFormat::Version5;
  } else if (trimmed == kRegedit4Header && !utf16_) {
    format_ = RegFileFormat::Regedit4;
  } else {
    throw RegFileError(1,
                       "not a registry file: the first line must be \"Windows Registry Editor Version 5.00\""
                       " or \"REGEDIT4\" (REGEDIT4 files are ANSI, never UTF-16)");
  }
}

// Keeps the bytes not yet given out at the front of the buffer and reads more behind them;
// the buffer grows only while one line is longer than it.
bool RegLineReader::Fill() {
  if (atEnd_) return false;
  if (begin_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  if (buffer_.size() - end_ < kChunk / 2) buffer_.resize(std::max(buffer_.size() * 2, end_ + kChunk));
  const std::size_t n = source_.Read(buffer_.data() + end_, buffer_.size() - end_);
  if (n == 0) {
    atEnd_ = true;
    return false;
  }
  end_ += n;
  return true;
}

bool RegLineReader::NextRawLine(std::string_view& raw) {
  const std::size_t step = utf16_ ? 2 : 1;
  std::size_t scanned = begin_;
  for (;;) {
    for (; scanned + step <= end_; scanned += step) {
      if (buffer_[scanned] == '\n' && (!utf16_ || buffer_[scanned + 1] == '\0')) {
        raw = std::string_view(buffer_.data() + begin_, scanned - begin_);
        begin_ = scanned + step;
        return true;
      }
    }
    const std::size_t offset = scanned - begin_;
    if (!Fill()) break;
    scanned = begin_ + offset;
  }
  if (begin_ == end_) return false;
  if (utf16_ && (end_ - begin_) % 2 != 0)
    throw RegFileError(lineNumber_ + 1, "the file is UTF-16 but has an odd number of bytes");
  raw = std::string_view(buffer_.data() + begin_, end_ - begin_);
  begin_ = end_;
  return true;
}

void RegLineReader::Decode(std::string_view raw, Text& line) {
  if (utf16_) {
    line.resize(raw.size() / 2);
    for (std::size_t i = 0; i < line.size(); ++i) {
      line[i] = static_cast<char16_t>(static_cast<unsigned char>(raw[2 * i]) |
                                      static_cast<unsigned char>(raw[2 * i + 1]) << 8);
    }
    while (!line.empty() && line.back() == u'\r') line.pop_back();
  } else {
    while (!raw.empty() && raw.back() == '\r') raw.remove_suffix(1);
    if (IsStandardUtf8(raw)) {
      line = FromUtf8(raw);
    } else if (format_ == RegFileFormat::Regedit4) {
      line = FromCp1252(raw);  // an ANSI file may be either, line by line
    } else {
      throw RegFileError(lineNumber_,
                         "the line is not valid UTF-8 (a version 5 file that is not UTF-16 must be UTF-8)");
    }
  }
}

bool RegLineReader::Next(Text& line) {
  std::string_view raw;
  if (!NextRawLine(raw)) return false;
  ++lineNumber_;
  if (line.capacity() > kKeptCapacity) Text().swap(line);
  Decode(raw, line);
  if (buffer_.size() > kKeptCapacity && end_ - begin_ < kChunk) {
    std::vector<char> smaller(buffer_.begin() + static_cast<std::ptrdiff_t>(begin_),
                              buffer_.begin() + static_cast<std::ptrdiff_t>(end_));
    smaller.resize(kChunk);
    end_ -= begin_;
    begin_ = 0;
    buffer_.swap(smaller);
  }
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
