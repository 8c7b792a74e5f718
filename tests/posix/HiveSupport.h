#pragma once
// A private folder for a test's hive files, removed with everything in it.
#include <filesystem>
#include <string>

namespace nv::test {

class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

std::string ReadBytes(const std::string& file);
void WriteBytes(const std::string& file, const std::string& bytes);

}  // namespace nv::test
