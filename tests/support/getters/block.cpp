#include "support/getters/block.h"

#include <algorithm>
#include <stdexcept>

namespace wire {

Block Block::None() {
  Block none;
  none.bytes_.clear();
  return none;
}

Block& Block::Text(std::size_t offset, std::string_view text) {
  return Raw(offset, Bytes(text.begin(), text.end()));
}

Block& Block::Raw(std::size_t offset, const Bytes& bytes) {
  if (offset + bytes.size() > bytes_.size()) throw std::out_of_range("beyond the block");
  std::copy(bytes.begin(), bytes.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
  return *this;
}

Block& Block::Number(std::size_t offset, uint64_t value, std::size_t width) {
  Bytes bytes;
  for (std::size_t index = 0; index < width; ++index) {
    bytes.push_back(static_cast<uint8_t>(value >> (8 * index)));
  }
  return Raw(offset, bytes);
}

}  // namespace wire
