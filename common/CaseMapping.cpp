#include "common/CaseMapping.h"

#include <array>
#include <cstdint>

namespace nv {
namespace {

struct CasePair {
  std::uint16_t from;
  std::uint16_t to;
};

constexpr CasePair kPairs[] = {
#include "common/CaseTable.inc"
};

// One lookup per unit: a full table is 128 KiB and makes upper-casing a plain copy loop.
const std::array<char16_t, 0x10000>& UpperTable() {
  static const auto table = [] {
    std::array<char16_t, 0x10000> t{};
    for (std::size_t c = 0; c < t.size(); ++c) t[c] = static_cast<char16_t>(c);
    for (const CasePair& p : kPairs) t[p.from] = static_cast<char16_t>(p.to);
    return t;
  }();
  return table;
}

}  // namespace

char16_t UpperChar(char16_t c) noexcept { return UpperTable()[c]; }

void UpperCaseInPlace(Text& text) noexcept {
  const auto& table = UpperTable();
  for (char16_t& c : text) c = table[c];
}

Text UpperCase(TextView text) {
  Text result(text);
  UpperCaseInPlace(result);
  return result;
}

}  // namespace nv
