#include "fuzz/FuzzInput.h"
#include "tests/engine/reference/Differential.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  const nv::Text filter = nv::fuzz::ConsumeText(input, 3);
  const nv::Text mask = nv::fuzz::ConsumeText(input, 24);
  const bool wholeText = input.ConsumeBool();
  const std::int16_t start = wholeText ? 0 : nv::fuzz::ConsumePosition(input);
  const std::int16_t end = wholeText ? 0 : nv::fuzz::ConsumePosition(input);
  const bool caseSensitive = input.ConsumeBool();
  const bool trim = input.ConsumeBool();
  const nv::Text text = nv::fuzz::ConsumeText(input, 300);
  nv::fuzz::Check(nv::reference::CompareFindValues(text, mask, filter, start, end, caseSensitive, trim));
  return 0;
}
