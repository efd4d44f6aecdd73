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

// Bytes that are zero where nothing is written.
class Wire {
 public:
  explicit Wire(size_t size) : bytes_(size) {}

  Wire& Text(size_t offset, std::string_view text) { return Put(offset, text.data(), text.size()); }
  Wire& U8(size_t offset, uint8_t value) { return Put(offset, &value, 1); }
  Wire& U16(size_t offset, uint16_t value) { return Put(offset, &value, 2); }
  Wire& U32(size_t offset, uint32_t value) { return Put(offset, &value, 4); }
  Wire& U64(size_t offset, uint64_t value) { return Put(offset, &value, 8); }

  const Bytes& bytes() const { return bytes_; }
  operator std::span<const std::byte>() const { return bytes_; }

 private:
  Wire& Put(size_t offset, const void* from, size_t width) {
    std::memcpy(std::span(bytes_).subspan(offset, width).data(), from, width);
    return *this;
  }

  Bytes bytes_;
};

// An input of 968 bytes that begins with a name.
inline Wire Block(std::string_view name = "") { return Wire(968).Text(0, name); }

// An input of 4 bytes.
Bytes Scalar(uint32_t value);

// What a command gave, its pieces put together.
struct Result {
  int error;
  Bytes reply;

  uint32_t WordAt(size_t offset) const;
  std::string TextAt(size_t offset) const;
};

// Names the first byte that differs, and is empty when none does.
std::string Difference(const Result& result, const Wire& expected);

// The reply has room for `capacity` bytes and can be delivered.
Result Execute(vdrsim::Executor& executor, uint32_t code, std::span<const std::byte> input,
               uint32_t capacity = 0);

// The caller's memory can't take the reply.
Result ExecuteInVain(vdrsim::Executor& executor, uint32_t code, std::span<const std::byte> input,
                     uint32_t capacity = 0);

}  // namespace in_process
