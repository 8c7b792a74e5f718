#pragma once
// Turns the fuzzer's bytes into engine inputs: mostly units of a small alphabet rich in
// separators, filters, spaces and letters of both cases, now and then any unit at all.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "common/Text.h"

namespace nv::fuzz {

inline Text ConsumeText(FuzzedDataProvider& input, std::size_t maxLength) {
  static constexpr TextView kAlphabet = u"ab;,,*%= \r\nA\u00C9\u00E9\u00DF\u00FF\u0178";
  Text text(input.ConsumeIntegralInRange<std::size_t>(0, maxLength), u' ');
  for (char16_t& unit : text) {
    const auto pick = input.ConsumeIntegral<std::uint8_t>();
    unit = pick < 0xF0 ? kAlphabet[pick % kAlphabet.size()] : input.ConsumeIntegral<char16_t>();
  }
  return text;
}

// A field position: mostly near the ends of a short text, sometimes anything in 16 bits.
inline std::int16_t ConsumePosition(FuzzedDataProvider& input) {
  return input.ConsumeBool() ? input.ConsumeIntegralInRange<std::int16_t>(-6, 6)
                             : input.ConsumeIntegral<std::int16_t>();
}

// A difference is a failure: report it and stop, as a crash would.
inline void Check(const std::string& difference) {
  if (difference.empty()) return;
  std::fprintf(stderr, "engine and reference differ: %s\n", difference.c_str());
  std::abort();
}

}  // namespace nv::fuzz
