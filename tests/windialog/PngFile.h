#pragma once
// A picture written as PNG: 8-bit RGB, stored without compression, which every viewer
// reads and which needs no library.
#include <cstdint>
#include <string>
#include <vector>

namespace nv::uitest {

struct RgbImage {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> rgb;  // rows top to bottom, three bytes a pixel
};

std::vector<std::uint8_t> EncodePng(const RgbImage& image);
bool WritePng(const std::string& path, const RgbImage& image);

}  // namespace nv::uitest
