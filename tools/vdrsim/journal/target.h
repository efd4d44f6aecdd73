#pragma once

#include <atomic>
#include <string>
#include <string_view>

#include "transport/unique_fd.h"

namespace vdrsim {

// Where a log goes: a file, or standard error.
class Target {
 public:
  // Creates the file, or empties it. Nobody need read a FIFO yet. Throws std::runtime_error.
  static Target File(const std::string& path);
  static Target StandardError();

  // Whether it takes what is written without anybody reading it.
  bool isPlainFile() const { return isPlainFile_; }

  // What to call it; empty where there is nobody to be told about it.
  const std::string& name() const { return name_; }

  // Writes all of `text`. Waits for whoever reads, and for a FIFO to be read at all, until
  // `givesUp`. Returns 0 or an errno value, ECANCELED when it gave up.
  int Write(std::string_view text, const std::atomic<bool>& givesUp);

 private:
  int Open();
  int AwaitReader(const std::atomic<bool>& givesUp);

  std::string name_{};
  UniqueFd file_{};
  bool isPlainFile_ = false;
};

}  // namespace vdrsim
