#include "support/wire.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace wire {

fake::Bytes Pattern(std::size_t size, unsigned seed) {
  fake::Bytes bytes(size);
  for (std::size_t index = 0; index < size; ++index) {
    bytes[index] =
        static_cast<uint8_t>(1 + (index * 7 + index / 251 + seed * std::size_t{13}) % 255);
  }
  return bytes;
}

fake::Bytes Patterns(std::size_t count, std::size_t size, const RecordPattern& pattern) {
  fake::Bytes all;
  for (std::size_t index = 0; index < count; ++index) {
    const fake::Bytes one = pattern(size, static_cast<unsigned>(index));
    all.insert(all.end(), one.begin(), one.end());
  }
  return all;
}

fake::Bytes Decoded(const fake::Bytes& source, std::initializer_list<Piece> pieces) {
  fake::Bytes record(source.size());
  for (const Piece& piece : pieces) {
    auto from = source.begin() + static_cast<std::ptrdiff_t>(piece.offset);
    auto to = record.begin() + static_cast<std::ptrdiff_t>(piece.offset);
    if (piece.how == 'c') {
      std::copy_n(from, piece.width, to);
      continue;
    }
    for (std::size_t index = 0; index + 1 < piece.width && *from != 0; ++index) *to++ = *from++;
  }
  return record;
}

fake::Bytes BytesOf(const void* object, std::size_t size) {
  const auto* bytes = static_cast<const uint8_t*>(object);
  return {bytes, bytes + size};
}

std::string Difference(const fake::Bytes& actual, const fake::Bytes& expected) {
  if (actual == expected) return "";
  if (actual.size() != expected.size()) {
    return fmt::format("{} bytes, expected {}", actual.size(), expected.size());
  }
  const auto [left, right] = std::mismatch(actual.begin(), actual.end(), expected.begin());
  return fmt::format("byte {} is 0x{:02x}, expected 0x{:02x}", left - actual.begin(), *left,
                     *right);
}

}  // namespace wire
