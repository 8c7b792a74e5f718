#include "common/Utf.h"

#include <array>

namespace nv {
namespace {

void AppendCodePoint(std::string& out, char32_t c) {
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (c >> 6)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (c >> 12)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (c >> 18)));
    out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

// Decodes one sequence at bytes[i]; returns its length, or 0 when malformed.
std::size_t DecodeOne(std::string_view bytes, std::size_t i, char32_t& c) {
  const auto b0 = static_cast<unsigned char>(bytes[i]);
  std::size_t length;
  char32_t minimum;
  if (b0 < 0x80) {
    c = b0;
    return 1;
  } else if ((b0 & 0xE0) == 0xC0) {
    length = 2, c = b0 & 0x1F, minimum = 0x80;
  } else if ((b0 & 0xF0) == 0xE0) {
    length = 3, c = b0 & 0x0F, minimum = 0x800;
  } else if ((b0 & 0xF8) == 0xF0) {
    length = 4, c = b0 & 0x07, minimum = 0x10000;
  } else {
    return 0;
  }
  if (i + length > bytes.size()) return 0;
  for (std::size_t k = 1; k < length; ++k) {
    const auto b = static_cast<unsigned char>(bytes[i + k]);
    if ((b & 0xC0) != 0x80) return 0;
    c = (c << 6) | (b & 0x3F);
  }
  if (c < minimum || c > 0x10FFFF) return 0;
  return length;
}

// The end of the run of ASCII bytes from `i`: in blocks of a fixed size first, which the
// compiler turns into vector instructions, as files and logs are mostly ASCII.
std::size_t AsciiRunEnd(std::string_view bytes, std::size_t i) {
  constexpr std::size_t kBlock = 16;
  while (i + kBlock <= bytes.size()) {
    unsigned char any = 0;
    for (std::size_t k = 0; k < kBlock; ++k) any |= static_cast<unsigned char>(bytes[i + k]);
    if (any >= 0x80) break;
    i += kBlock;
  }
  while (i < bytes.size() && static_cast<unsigned char>(bytes[i]) < 0x80) ++i;
  return i;
}

constexpr std::array<char16_t, 32> kCp1252High = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

}  // namespace

std::string ToUtf8(TextView text) {
  std::string out;
  AppendUtf8(text, out);
  return out;
}

void AppendUtf8(TextView text, std::string& out) {
  out.reserve(out.size() + text.size());
  std::size_t i = 0;
  while (i < text.size()) {
    const char16_t u = text[i];
    if (u < 0x80) {  // a log is mostly ASCII: a run of it is copied without the general case
      std::size_t end = i + 1;
      // Blocks of a fixed size, which the compiler turns into vector instructions.
      constexpr std::size_t kBlock = 16;
      while (end + kBlock <= text.size()) {
        char16_t any = 0;
        for (std::size_t k = 0; k < kBlock; ++k) any |= text[end + k];
        if (any >= 0x80) break;
        end += kBlock;
      }
      while (end < text.size() && text[end] < 0x80) ++end;
      const std::size_t at = out.size();
      out.resize(at + (end - i));
      for (char* to = out.data() + at; i < end; ++i) *to++ = static_cast<char>(text[i]);
    } else if (u >= 0xD800 && u < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000) {
      AppendCodePoint(out, 0x10000 + ((static_cast<char32_t>(u) - 0xD800) << 10) + (text[i + 1] - 0xDC00));
      i += 2;
    } else {
      AppendCodePoint(out, u);
      ++i;
    }
  }
}

Text FromUtf8(std::string_view bytes) {
  Text out;
  AppendFromUtf8(bytes, out);
  return out;
}

void AppendFromUtf8(std::string_view bytes, Text& out) {
  // No sequence gives more units than it has bytes, so the room is made once.
  const std::size_t start = out.size();
  out.resize(start + bytes.size());
  char16_t* to = out.data() + start;
  for (std::size_t i = 0; i < bytes.size();) {
    if (static_cast<unsigned char>(bytes[i]) < 0x80) {
      for (const std::size_t end = AsciiRunEnd(bytes, i); i < end; ++i) *to++ = static_cast<char16_t>(bytes[i]);
      continue;
    }
    char32_t c;
    const std::size_t length = DecodeOne(bytes, i, c);
    if (length == 0) {
      *to++ = 0xFFFD;
      ++i;
    } else if (c < 0x10000) {
      *to++ = static_cast<char16_t>(c);
      i += length;
    } else {
      c -= 0x10000;
      *to++ = static_cast<char16_t>(0xD800 + (c >> 10));
      *to++ = static_cast<char16_t>(0xDC00 + (c & 0x3FF));
      i += length;
    }
  }
  out.resize(static_cast<std::size_t>(to - out.data()));
}

std::size_t Utf16Length(std::string_view utf8) noexcept {
  // Every sequence has one byte that is no continuation byte, and a four-byte one (a lead
  // from F0 up) stands for a surrogate pair. Counted sixteen bytes at a time into a small
  // counter, a form the compiler vectorises.
  const auto unitsOf = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return static_cast<unsigned char>(((byte & 0xC0) != 0x80) + (byte >= 0xF0));
  };
  constexpr std::size_t kBlock = 16;
  std::size_t units = 0;
  std::size_t i = 0;
  for (; i + kBlock <= utf8.size(); i += kBlock) {
    unsigned char block = 0;  // at most 32
    for (std::size_t k = 0; k < kBlock; ++k) block = static_cast<unsigned char>(block + unitsOf(utf8[i + k]));
    units += block;
  }
  for (; i < utf8.size(); ++i) units += unitsOf(utf8[i]);
  return units;
}

std::size_t Utf8ValidLength(std::string_view bytes) {
  std::size_t i = 0;
  while ((i = AsciiRunEnd(bytes, i)) < bytes.size()) {
    char32_t c;
    const std::size_t length = DecodeOne(bytes, i, c);
    if (length == 0) break;
    i += length;
  }
  return i;
}

bool IsUtf8(std::string_view bytes) { return Utf8ValidLength(bytes) == bytes.size(); }

bool IsStandardUtf8(std::string_view bytes) {
  for (std::size_t i = 0; (i = AsciiRunEnd(bytes, i)) < bytes.size();) {
    char32_t c;
    const std::size_t length = DecodeOne(bytes, i, c);
    if (length == 0 || (c >= 0xD800 && c < 0xE000)) return false;
    i += length;
  }
  return true;
}

Text FromCp1252(std::string_view bytes) {
  Text out;
  out.reserve(bytes.size());
  for (const char ch : bytes) {
    const auto b = static_cast<unsigned char>(ch);
    out.push_back(b >= 0x80 && b < 0xA0 ? kCp1252High[b - 0x80] : static_cast<char16_t>(b));
  }
  return out;
}

}  // namespace nv
