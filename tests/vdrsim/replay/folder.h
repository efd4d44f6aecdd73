#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace replay_test {

// A folder that is gone when the test is over.
class Folder {
 public:
  Folder() {
    std::string name = testing::TempDir() + "vdrsim-XXXXXX";
    path_ = mkdtemp(name.data());
  }
  Folder(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path_); }

  std::string Path(const char* name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

inline std::string Content(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void Write(const std::string& path, std::string_view content) {
  std::ofstream(path) << content;
}

}  // namespace replay_test
