#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <span>

#include "call.h"

namespace vdrsim {

// What a journal tells of one command, or between two of them.
struct Entry {
  enum class Kind : uint8_t { Command, Mark, End };

  Kind kind = Kind::Command;
  Node node = Node::Normal;
  uint64_t seq = 0;  // of an end the number of entries before
  int64_t time = 0;  // of the monotonic clock, in nanoseconds
  pid_t process = 0;
  pid_t thread = 0;
  uint32_t code = 0;
  int error = 0;
  uint32_t capacity = 0;
  uint32_t length = 0;                  // that the caller was told
  uint32_t produced = 0;                // bytes of the reply
  std::span<const std::byte> input{};   // of a mark its text
  std::span<const std::byte> output{};  // where it is kept
};

}  // namespace vdrsim
