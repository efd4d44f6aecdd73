#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Inputs and records, written by literal offsets.
namespace wire {

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
    // An empty text may come without an address.
    if (width != 0) std::memcpy(std::span(bytes_).subspan(offset, width).data(), from, width);
    return *this;
  }

  Bytes bytes_;
};

// Names the first byte that differs, and is empty when none does.
std::string Difference(const Bytes& actual, const Bytes& expected);

}  // namespace wire
