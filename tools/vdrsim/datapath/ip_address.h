#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "requests/input.h"

// Addresses as their bytes came, which is in network byte order, and so is how they compare.
namespace vdrsim {

using Ipv4 = std::array<std::byte, 4>;
// An IPv4 address where either family can stand: four bytes, and zeros behind them.
using IpAddress = std::array<std::byte, 16>;

constexpr Ipv4 Ipv4Of(uint32_t word) { return std::bit_cast<Ipv4>(word); }
constexpr uint32_t WordOf(const Ipv4& address) { return std::bit_cast<uint32_t>(address); }

constexpr IpAddress IpAddressOf(uint64_t part1, uint64_t part2) {
  return std::bit_cast<IpAddress>(std::array{part1, part2});
}

// The address that a command says in one field, or in two.
template <size_t Index>
IpAddress AddressOf(const InputOf<Index>& input) {
  if constexpr (InputOf<Index>::kRequest.Has("ip")) {
    return IpAddressOf(input.Word("ip"), 0);
  } else {
    return IpAddressOf(input.Quad("ipPart1"), input.Quad("ipPart2"));
  }
}

}  // namespace vdrsim
