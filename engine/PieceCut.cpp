#include "engine/PieceCut.h"

#include "engine/Scan.h"

namespace nv {

PieceCut::PieceCut(TextView text, TextView separator) : text_(text), separator_(separator) {
  if (!separator.empty()) ForEachOccurrenceEnd(text, separator, [this](std::size_t end) { ends_.push_back(end); });
}

TextView PieceCut::Range(std::size_t first, std::size_t last) const noexcept {
  const std::size_t begin = first == 0 ? 0 : ends_[first - 1];
  const std::size_t end = last < ends_.size() ? ends_[last] : text_.size();
  return text_.substr(begin, end - begin);
}

}  // namespace nv
