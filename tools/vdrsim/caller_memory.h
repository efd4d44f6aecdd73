#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vdrsim {

// The memory of a caller that waits for its call to be answered. Pages that the caller itself can't
// read or write are refused here too.
class CallerMemory {
 public:
  explicit CallerMemory(pid_t thread) : thread_(thread) {}

  // Each returns false unless every byte was copied; some may have been copied even then.
  bool Read(uint64_t address, std::span<std::byte> bytes) const;
  bool Write(uint64_t address, std::span<const std::byte> bytes) const;

  // Reads the terminated text at `address` into `buffer`. The result is empty when the text does
  // not fit with its terminator or can't be read.
  std::string_view ReadText(uint64_t address, std::span<char> buffer) const;

 private:
  pid_t thread_;
};

}  // namespace vdrsim
