#include <vector>

#include "fuzz/FuzzInput.h"
#include "tests/engine/reference/Differential.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  const nv::Text separator = nv::fuzz::ConsumeText(input, 3);
  std::vector<nv::reference::FieldCall> fields(input.ConsumeIntegralInRange<std::size_t>(1, 4));
  for (auto& field : fields) {
    if (input.ConsumeIntegralInRange(0, 4) != 0) field.start = nv::fuzz::ConsumePosition(input);
    if (input.ConsumeIntegralInRange(0, 4) != 0) field.end = nv::fuzz::ConsumePosition(input);
    field.showSeparators = input.ConsumeBool();
  }
  const nv::Text text = nv::fuzz::ConsumeText(input, 300);
  nv::fuzz::Check(nv::reference::CompareExtractPieces(text, separator, fields));
  return 0;
}
