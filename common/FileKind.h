#pragma once
// What a path names, in words, for refusing anything but a regular file before it is opened
// (a FIFO would block the open, a device or a folder would be read without end or fail oddly).
#include <string>

namespace nv {

// Empty when `path` is a regular file (after symbolic links) or does not exist; otherwise
// what it is: "a folder", "a FIFO (named pipe)", "a character device", ...
std::string NonRegularFileKind(const std::string& path);

}  // namespace nv
