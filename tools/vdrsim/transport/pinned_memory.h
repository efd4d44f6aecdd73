#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "unique_fd.h"

namespace vdrsim {

// The memory that a process has at this moment. When the process executes another program, its
// number leads to that program's memory, but this leads to nothing.
class PinnedMemory {
 public:
  // Nothing where the kernel can't tell what may be written, which Linux before 6.11 can't.
  static std::optional<PinnedMemory> Of(pid_t process);

  bool IsWritable(uint64_t address, uint64_t length) const;

  // Returns false unless every byte was written. The file behind it would write to protected pages
  // too; they are refused here.
  bool Write(uint64_t address, std::span<const std::byte> bytes) const;

 private:
  PinnedMemory(UniqueFd bytes, UniqueFd map);

  UniqueFd bytes_;
  UniqueFd map_;
};

}  // namespace vdrsim
