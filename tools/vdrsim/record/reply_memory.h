#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "transport/unique_fd.h"

namespace vdrsim {

// Room for a reply of any length, of which only what is written takes memory.
class ReplyMemory {
 public:
  // Not usable when there is no room of this size.
  explicit ReplyMemory(uint32_t size);
  ReplyMemory(const ReplyMemory&) = delete;
  ~ReplyMemory();

  explicit operator bool() const { return isUsable_; }

  // Zeros at first.
  std::span<std::byte> room() const { return {start_, size_}; }

  // The bytes up to the last that is not zero.
  uint32_t Written() const;

 private:
  uint32_t EndOfTouched() const;

  uint32_t size_;
  bool isUsable_ = false;
  UniqueFd file_{};
  std::byte* start_ = nullptr;
};

}  // namespace vdrsim
