// Any text as a regedit file: it is read or refused with a line and a reason, never anything
// else, and read the same whether it comes whole or in pieces of any size (so that a line end,
// a UTF-16 unit or a run of hex bytes may be cut between two reads).
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "common/Utf.h"
#include "host/regfile/RegFile.h"

namespace {

// Pieces of the syntax, so that most inputs get past the header into the value lines.
constexpr const char* kTokens[] = {
    "\"a\"=", "\"B\"=", "@=", "hex:", "hex(1):", "hex(7):", "dword:", "0a", "ff", "7", ",", " ", "\\", "\r\n",
    "\n", "\r", "\"", "x", "-", ";", "zz", "=", "\\n", "\\0", "\\\r\n  ", "[HKEY_LOCAL_MACHINE\\T]", "[-HKCU\\X]",
    "\xC3\xA9",      // é
    "\xE0\xA8\x85",  // U+0A05: in UTF-16, a line-feed byte as the high byte
    "\xC4\x8A",      // U+010A: the same, as the low byte
};

class Pieces final : public nv::RegByteSource {
 public:
  Pieces(std::string_view bytes, std::size_t piece) : bytes_(bytes), piece_(piece) {}
  std::size_t Read(char* buffer, std::size_t size) override {
    const std::size_t n = std::min({size, piece_, bytes_.size()});
    std::copy_n(bytes_.data(), n, buffer);
    bytes_.remove_prefix(n);
    return n;
  }

 private:
  std::string_view bytes_;
  std::size_t piece_;
};

struct Outcome {
  std::vector<nv::RegFileOperation> operations;
  std::string refusal;
  bool operator==(const Outcome&) const = default;
};

Outcome Read(std::string_view file, std::size_t piece) {
  Outcome outcome;
  Pieces source(file, piece);
  try {
    nv::ReadRegFile(source, [&](nv::RegFileOperation& operation) { outcome.operations.push_back(operation); });
  } catch (const nv::RegFileError& e) {
    outcome.refusal = e.what();
  }
  return outcome;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  const bool utf16 = input.ConsumeBool();
  const std::size_t piece = input.ConsumeIntegralInRange<std::size_t>(1, 9);
  std::string text = "Windows Registry Editor Version 5.00\r\n[HKEY_LOCAL_MACHINE\\T]\r\n";
  while (input.remaining_bytes() > 0 && text.size() < 4096) {
    const auto pick = input.ConsumeIntegral<std::uint8_t>();
    if (pick < 0xF0) {
      text += kTokens[pick % std::size(kTokens)];
    } else {
      text += static_cast<char>(input.ConsumeIntegral<std::uint8_t>());
    }
  }
  std::string file = text;
  if (utf16 && nv::IsUtf8(text)) {
    const nv::Text units = nv::FromUtf8(text);
    file.assign("\xFF\xFE");
    for (const char16_t unit : units) {
      file += static_cast<char>(unit & 0xFF);
      file += static_cast<char>(unit >> 8);
    }
  }
  if (Read(file, file.size()) != Read(file, piece)) {
    std::fprintf(stderr, "the file reads otherwise in pieces of %zu bytes\n", piece);
    std::abort();
  }
  return 0;
}
