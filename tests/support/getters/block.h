#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace wire {

using Bytes = std::vector<uint8_t>;

// The 968 bytes that a command should send, written by literal offsets.
class Block {
 public:
  Block() : bytes_(968) {}

  // What a command without input sends.
  static Block None();

  Block& Text(std::size_t offset, std::string_view text);  // no terminator of its own
  Block& U8(std::size_t offset, uint8_t value) { return Number(offset, value, 1); }
  Block& U16(std::size_t offset, uint16_t value) { return Number(offset, value, 2); }
  Block& U32(std::size_t offset, uint32_t value) { return Number(offset, value, 4); }
  Block& U64(std::size_t offset, uint64_t value) { return Number(offset, value, 8); }
  Block& Raw(std::size_t offset, const Bytes& bytes);

  const Bytes& bytes() const { return bytes_; }

 private:
  Block& Number(std::size_t offset, uint64_t value, std::size_t width);

  Bytes bytes_;
};

}  // namespace wire
