#include "common/FileKind.h"

#include <filesystem>

namespace nv {

std::string NonRegularFileKind(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  switch (status.type()) {
    case fs::file_type::regular:
    case fs::file_type::not_found:
      return {};
    case fs::file_type::directory:
      return "a folder";
    case fs::file_type::fifo:
      return "a FIFO (named pipe)";
    case fs::file_type::character:
      return "a character device";
    case fs::file_type::block:
      return "a block device";
    case fs::file_type::socket:
      return "a socket";
    default:
      return error ? "not readable (" + error.message() + ")" : "not a regular file";
  }
}

}  // namespace nv
