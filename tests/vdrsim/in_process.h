#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "call.h"

// Commands for a datapath in the test's own process, written by literal offsets.
namespace in_process {

using Bytes = std::vector<std::byte>;

// An input of 968 bytes.
class Block {
 public:
  explicit Block(std::string_view name = "") { Text(0, name); }

  Block& Text(size_t offset, std::string_view text) {
    return Put(offset, text.data(), text.size());
  }
  Block& U8(size_t offset, uint8_t value) { return Put(offset, &value, 1); }
  Block& U16(size_t offset, uint16_t value) { return Put(offset, &value, 2); }
  Block& U32(size_t offset, uint32_t value) { return Put(offset, &value, 4); }
  Block& U64(size_t offset, uint64_t value) { return Put(offset, &value, 8); }

  operator std::span<const std::byte>() const { return bytes_; }

 private:
  Block& Put(size_t offset, const void* from, size_t width) {
    std::memcpy(std::span(bytes_).subspan(offset, width).data(), from, width);
    return *this;
  }

  Bytes bytes_ = Bytes(968);
};

// An input of 4 bytes.
Bytes Scalar(uint32_t value);

// What a command gave, its pieces put together.
struct Result {
  int error;
  Bytes reply;

  uint32_t WordAt(size_t offset) const;
  std::string TextAt(size_t offset) const;
};

// The reply has room for `capacity` bytes and can be delivered.
Result Execute(vdrsim::Executor& executor, uint32_t code, std::span<const std::byte> input,
               uint32_t capacity = 0);

// The caller's memory can't take the reply.
Result ExecuteInVain(vdrsim::Executor& executor, uint32_t code, std::span<const std::byte> input,
                     uint32_t capacity = 0);

}  // namespace in_process
