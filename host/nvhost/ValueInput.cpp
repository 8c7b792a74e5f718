#include "host/nvhost/ValueInput.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string_view>

#include "common/FileKind.h"
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

Utf8Extent ReadUtf8Blocks(const std::string& path, const Utf8BlockSink& take, std::size_t maxUnits,
                          std::uint64_t maxBytes, std::size_t blockBytes) {
  const bool standardInput = path == "-";
  const std::string source = standardInput ? "standard input" : path;
  const auto tooLong = [&] {
    return std::runtime_error(source + " is too long: a value holds at most " + std::to_string(maxUnits) +
                              " UTF-16 units (characters, two for one beyond U+FFFF)");
  };
  std::ifstream file;
  if (!standardInput) {
    // A FIFO would block the open, and a device would be read without end.
    if (const std::string kind = NonRegularFileKind(path); !kind.empty())
      throw std::runtime_error("cannot read " + path + ": it is " + kind + ", not a regular file (- reads standard input)");
    file.open(path, std::ios::binary | std::ios::ate);
    if (!file) throw std::runtime_error("cannot open " + path);
    // Never fewer units than a third of the bytes: a file far too long is refused unread.
    const std::streamoff size = file.tellg();
    if (size > 0 && std::min<std::uint64_t>(static_cast<std::uint64_t>(size), maxBytes) / 3 > maxUnits)
      throw tooLong();
    file.seekg(0);
  }
  const auto readInto = [&](char* into, std::size_t size) -> std::size_t {
    if (standardInput) {
      const std::size_t got = std::fread(into, 1, size, stdin);
      if (std::ferror(stdin)) throw std::runtime_error("cannot read standard input");
      return got;
    }
    file.read(into, static_cast<std::streamsize>(size));
    if (file.bad()) throw std::runtime_error("cannot read " + path);
    return static_cast<std::size_t>(file.gcount());
  };
  Utf8Extent extent;
  std::string block;  // a sequence cut by the last block's end, then the next block
  for (;;) {
    const std::size_t carried = block.size();
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(blockBytes, maxBytes - extent.bytes - carried));
    block.resize(carried + wanted);
    const std::size_t got = wanted == 0 ? 0 : readInto(block.data() + carried, wanted);
    block.resize(carried + got);
    const std::size_t valid = Utf8ValidLength(block);
    // A few bytes short of the end may be a sequence the next block completes: they are
    // checked again with it. At the input's end they are what they are.
    const bool maybeCut = got != 0 && block.size() - valid < 4;
    if (valid != block.size() && !maybeCut)
      throw std::runtime_error(source + " is not UTF-8: bad byte at offset " + std::to_string(extent.bytes + valid));
    const std::string_view whole = std::string_view(block).substr(0, valid);
    extent.units += Utf16Length(whole);
    if (extent.units > maxUnits) throw tooLong();
    take(whole);
    if (got == 0) return extent;
    extent.bytes += valid;
    block.erase(0, valid);
  }
}

Text ReadUtf8Input(const std::string& path, std::size_t maxUnits, std::size_t blockBytes) {
  Text text;
  ReadUtf8Blocks(path, [&](std::string_view utf8) { AppendFromUtf8(utf8, text); }, maxUnits, UINT64_MAX, blockBytes);
  return text;
}

void OutputBytes::Write(std::string_view bytes) {
  if (!started_) {
    started_ = true;
    if (stream_ == nullptr) {
      file_.open(path_, std::ios::binary | std::ios::trunc);
      if (!file_) throw std::runtime_error("cannot write " + path_);
      stream_ = &file_;
    }
  }
  stream_->write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!*stream_) throw std::runtime_error("cannot write " + (path_.empty() ? std::string("the output") : path_));
}

void OutputBytes::Close() {
  if (!file_.is_open()) return;
  file_.close();
  if (!file_) throw std::runtime_error("cannot write " + path_);
}

}  // namespace nv
