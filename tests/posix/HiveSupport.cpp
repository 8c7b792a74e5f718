#include "tests/posix/HiveSupport.h"

#include <unistd.h>

#include <atomic>
#include <fstream>
#include <iterator>

namespace nv::test {

TempFolder::TempFolder() {
  static std::atomic<int> counter{0};
  path_ = std::filesystem::temp_directory_path() /
          ("nvextch-posix-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
  std::filesystem::remove_all(path_);
  std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string ReadBytes(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void WriteBytes(const std::string& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

}  // namespace nv::test
