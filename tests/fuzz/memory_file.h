#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "require.h"

// A file that is in memory alone, for what opens files by their path.
class MemoryFile {
 public:
  explicit MemoryFile(std::string_view content) : file_(memfd_create("fuzz", MFD_CLOEXEC)) {
    Require(file_ >= 0 && write(file_, content.data(), content.size()) ==
                              static_cast<ssize_t>(content.size()),
            "there is memory");
  }
  MemoryFile(const MemoryFile&) = delete;
  ~MemoryFile() { close(file_); }

  std::string Path() const { return "/proc/self/fd/" + std::to_string(file_); }

 private:
  int file_;
};
