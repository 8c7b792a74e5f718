#include "tests/windialog/PngFile.h"

#include <algorithm>
#include <array>
#include <fstream>

namespace nv::uitest {
namespace {

std::uint32_t Crc(const std::uint8_t* data, std::size_t size, std::uint32_t crc = 0xFFFFFFFFu) {
  static const std::array<std::uint32_t, 256> table = [] {
    std::array<std::uint32_t, 256> entries{};
    for (std::uint32_t n = 0; n < 256; ++n) {
      std::uint32_t c = n;
      for (int k = 0; k < 8; ++k) c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
      entries[n] = c;
    }
    return entries;
  }();
  for (std::size_t i = 0; i < size; ++i) crc = table[(crc ^ data[i]) & 0xFFu] ^ (crc >> 8);
  return crc;
}

void PutBig(std::vector<std::uint8_t>& out, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<std::uint8_t>(value >> shift));
}

void PutChunk(std::vector<std::uint8_t>& out, const char (&type)[5], const std::vector<std::uint8_t>& body) {
  PutBig(out, static_cast<std::uint32_t>(body.size()));
  const std::size_t start = out.size();
  out.insert(out.end(), type, type + 4);
  out.insert(out.end(), body.begin(), body.end());
  PutBig(out, Crc(out.data() + start, out.size() - start) ^ 0xFFFFFFFFu);
}

// A zlib stream of stored blocks (no compression) with its Adler-32.
std::vector<std::uint8_t> Stored(const std::vector<std::uint8_t>& data) {
  std::vector<std::uint8_t> out = {0x78, 0x01};
  constexpr std::size_t kBlock = 65535;
  std::size_t offset = 0;
  do {
    const std::size_t length = std::min(kBlock, data.size() - offset);
    const bool last = offset + length == data.size();
    out.push_back(last ? 1 : 0);
    out.push_back(static_cast<std::uint8_t>(length));
    out.push_back(static_cast<std::uint8_t>(length >> 8));
    out.push_back(static_cast<std::uint8_t>(~length));
    out.push_back(static_cast<std::uint8_t>(~length >> 8));
    out.insert(out.end(), data.begin() + static_cast<std::ptrdiff_t>(offset),
               data.begin() + static_cast<std::ptrdiff_t>(offset + length));
    offset += length;
  } while (offset < data.size());
  std::uint32_t a = 1;
  std::uint32_t b = 0;
  for (const std::uint8_t byte : data) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  PutBig(out, (b << 16) | a);
  return out;
}

}  // namespace

std::vector<std::uint8_t> EncodePng(const RgbImage& image) {
  std::vector<std::uint8_t> out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  std::vector<std::uint8_t> header;
  PutBig(header, static_cast<std::uint32_t>(image.width));
  PutBig(header, static_cast<std::uint32_t>(image.height));
  header.insert(header.end(), {8, 2, 0, 0, 0});  // 8 bits, RGB, deflate, no filter, no interlace
  PutChunk(out, "IHDR", header);
  std::vector<std::uint8_t> rows;
  const auto stride = static_cast<std::size_t>(image.width) * 3;
  for (int y = 0; y < image.height; ++y) {
    rows.push_back(0);  // no filter on the row
    const auto* row = image.rgb.data() + static_cast<std::size_t>(y) * stride;
    rows.insert(rows.end(), row, row + stride);
  }
  PutChunk(out, "IDAT", Stored(rows));
  PutChunk(out, "IEND", {});
  return out;
}

bool WritePng(const std::string& path, const RgbImage& image) {
  const std::vector<std::uint8_t> bytes = EncodePng(image);
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return static_cast<bool>(file);
}

}  // namespace nv::uitest
