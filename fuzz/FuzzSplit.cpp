#include "fuzz/FuzzInput.h"
#include "tests/engine/reference/Differential.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  const nv::Text separator = nv::fuzz::ConsumeText(input, 4);
  const nv::Text text = nv::fuzz::ConsumeText(input, 300);
  nv::fuzz::Check(nv::reference::CompareSplit(text, separator));
  return 0;
}
