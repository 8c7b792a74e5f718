#pragma once
// Values and files in and out of nvhost byte for byte: a file or standard input read in
// blocks, UTF-8 checked; a value written to a file with nothing added.
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "common/Text.h"

namespace nv {

// The bytes of PATH, or of standard input for "-". Throws std::runtime_error naming the file.
std::string ReadInputBytes(const std::string& path);

// The text of PATH, or of standard input for "-", read as UTF-8 in blocks of `blockBytes`,
// each checked and widened as it comes: a log of many MiB is never held as bytes beside its
// text. Throws std::runtime_error naming the file, and for bytes that are not UTF-8 the
// offset of the first bad one, and once the text has more than `maxUnits` units, without
// reading further (a file too long for what holds it fails before it fills the memory).
Text ReadUtf8Input(const std::string& path, std::size_t maxUnits = SIZE_MAX, std::size_t blockBytes = 1 << 20);

// The same reading, each block's well-formed UTF-8 (whole sequences) given to `take` once it
// is checked, and at most `maxBytes` bytes read: a file read a second time gives what it held
// the first, though it has grown since.
struct Utf8Extent {
  std::uint64_t bytes = 0;
  std::size_t units = 0;  // UTF-16
};
using Utf8BlockSink = std::function<void(std::string_view utf8)>;
Utf8Extent ReadUtf8Blocks(const std::string& path, const Utf8BlockSink& take, std::size_t maxUnits = SIZE_MAX,
                          std::uint64_t maxBytes = UINT64_MAX, std::size_t blockBytes = 1 << 20);

// Bytes written as they are made, to a stream or to PATH, which is made (or replaced) only at
// the first write: a command that finds nothing to write leaves an existing file as it was.
// Throws std::runtime_error naming the file when it cannot be written.
class OutputBytes {
 public:
  explicit OutputBytes(std::ostream& stream) : stream_(&stream) {}
  explicit OutputBytes(std::string path) : path_(std::move(path)) {}

  void Write(std::string_view bytes);
  // The file's last bytes written out; nothing for a stream.
  void Close();

 private:
  std::string path_;
  std::ofstream file_;
  std::ostream* stream_ = nullptr;
  bool started_ = false;
};

}  // namespace nv
