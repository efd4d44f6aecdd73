#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

// Takes an input apart from its front. Where it has ended, numbers are zero and spans are short.
class Reader {
 public:
  explicit Reader(std::span<const uint8_t> input) : rest_(input) {}

  bool Ended() const { return rest_.empty(); }

  std::span<const uint8_t> Bytes(std::size_t most) {
    const auto taken = rest_.first(std::min(most, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return taken;
  }

  std::span<const uint8_t> Rest() { return Bytes(rest_.size()); }

  template <typename Number>
  Number Take() {
    const auto bytes = Bytes(sizeof(Number));
    Number number = 0;
    if (!bytes.empty()) std::memcpy(&number, bytes.data(), bytes.size());
    return number;
  }

 private:
  std::span<const uint8_t> rest_;
};
