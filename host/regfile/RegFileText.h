#pragma once
// From a registry file's bytes to its lines of text, one line at a time, and the byte forms
// of registry text.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/Text.h"

namespace nv {

enum class RegFileFormat { Version5, Regedit4 };

// Where a registry file's bytes come from, a piece at a time.
class RegByteSource {
 public:
  virtual ~RegByteSource() = default;
  // Up to `size` bytes into `buffer`; 0 at the end. Throws std::runtime_error when reading fails.
  virtual std::size_t Read(char* buffer, std::size_t size) = 0;
};

// Bytes already in memory.
class RegBytesInMemory final : public RegByteSource {
 public:
  explicit RegBytesInMemory(std::string_view bytes) : bytes_(bytes) {}
  std::size_t Read(char* buffer, std::size_t size) override;

 private:
  std::string_view bytes_;
};

// The lines of a registry file. Finds the encoding (UTF-16LE with a byte-order mark, UTF-8
// with or without one, and for REGEDIT4 also Windows-1252, line by line) and checks the header
// when made. Lines end at LF; the CRs before it (CRLF, CR CR LF) are not part of the line.
// Only the text of the line being read is held, so a file of any size costs the memory of its
// longest line.
class RegLineReader {
 public:
  // Throws RegFileError when the header is not a registry file's.
  explicit RegLineReader(RegByteSource& source);

  RegFileFormat Format() const noexcept { return format_; }
  // The next line into `line`; false at the end of the file. Throws RegFileError when the
  // line cannot be decoded.
  bool Next(Text& line);
  // 1-based number of the line Next gave last (1: the header).
  std::size_t LineNumber() const noexcept { return lineNumber_; }

 private:
  bool Fill();
  // Appends the text of `raw`, a piece of line `number`, to `line`.
  void Decode(std::string_view raw, std::size_t number, Text& line);

  RegByteSource& source_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0, end_ = 0;
  bool utf16_ = false;
  bool atEnd_ = false;
  RegFileFormat format_ = RegFileFormat::Version5;
  std::size_t lineNumber_ = 0;
};

// Text as the registry stores it: UTF-16LE, with a terminating zero when asked.
std::vector<std::uint8_t> Utf16Bytes(TextView text, bool terminated);

// REGEDIT4 holds the text of hex(1), hex(2) and hex(7) data as ANSI bytes: UTF-8 when they
// are well-formed UTF-8, Windows-1252 otherwise. Zeros stay zeros.
std::vector<std::uint8_t> AnsiToUtf16Bytes(std::span<const std::uint8_t> ansi);

}  // namespace nv
