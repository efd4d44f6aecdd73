#pragma once

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/contract.h"

// How the contracts write down what a call does.
namespace contract {

inline Steps operator+(Steps left, const Steps& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

inline std::string Malloc(std::size_t size) { return fmt::format("malloc({})", size); }
inline std::string Calloc(std::size_t count, std::size_t size) {
  return fmt::format("calloc({}, {})", count, size);
}
inline std::string Free(std::size_t size) { return fmt::format("free({})", size); }

inline const Steps kExchange{"open64", "ioctl", "close"};

// A pointer value that no allocation has.
template <typename Pointer>
Pointer Sentinel() {
  static char anything;
  return reinterpret_cast<Pointer>(&anything);
}

inline void ExpectNothingLeft(const fake::Device& device) {
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

}  // namespace contract
