#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string_view>

#include "unique_fd.h"

namespace vdrsim {

// The lines that the kernel writes about a process, /proc/N/status, to be read again and again.
class StatusFile {
 public:
  // Where it can't be opened the result is empty, and errno says why.
  static StatusFile Of(pid_t process);

  explicit operator bool() const { return static_cast<bool>(file_); }

  // The number behind `label`, which ends with its colon, as it is now.
  std::optional<uint64_t> Number(std::string_view label, int base = 10) const;

 private:
  UniqueFd file_{};
};

}  // namespace vdrsim
