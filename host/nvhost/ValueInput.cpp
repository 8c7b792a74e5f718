#include "host/nvhost/ValueInput.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

#include "common/Utf.h"

namespace nv {

std::string ReadInputBytes(const std::string& path) {
  std::string bytes;
  if (path == "-") {
    // Standard input in large blocks; on Windows nvhost has put it in binary mode.
    char block[1 << 16];
    std::size_t got = 0;
    while ((got = std::fread(block, 1, sizeof block, stdin)) > 0) bytes.append(block, got);
    if (std::ferror(stdin)) throw std::runtime_error("cannot read standard input");
    return bytes;
  }
  std::ifstream in(path, std::ios::binary | std::ios::ate);
  if (!in) throw std::runtime_error("cannot open " + path);
  const std::streamoff size = in.tellg();
  if (size > 0) {
    bytes.resize(static_cast<std::size_t>(size));
    in.seekg(0);
    in.read(bytes.data(), static_cast<std::streamsize>(size));
    if (in.gcount() != static_cast<std::streamsize>(size)) throw std::runtime_error("cannot read " + path);
  } else {
    // Not a regular file (a pipe, a device): read to its end.
    in.clear();
    in.seekg(0);
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  if (in.bad()) throw std::runtime_error("cannot read " + path);
  return bytes;
}

Text DecodeUtf8Input(const std::string& bytes, const std::string& source) {
  const std::size_t valid = Utf8ValidLength(bytes);
  if (valid != bytes.size())
    throw std::runtime_error(source + " is not UTF-8: bad byte at offset " + std::to_string(valid));
  return FromUtf8(bytes);
}

void WriteOutputBytes(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) throw std::runtime_error("cannot write " + path);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) throw std::runtime_error("cannot write " + path);
}

}  // namespace nv
