#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

// Values as people write them. Each reader takes the whole text or nothing; addresses come out in
// network byte order, as the datapath has them.

namespace tools {

// Decimal, or hexadecimal after 0x, and nothing around it.
std::optional<uint64_t> ParseNumber(std::string_view text);

std::optional<uint32_t> ParseIpv4(std::string_view text);

std::optional<std::array<uint8_t, 16>> ParseIpv6(std::string_view text);

// Six groups of one or two hexadecimal digits with colons or dashes between them.
std::optional<std::array<uint8_t, 6>> ParseMac(std::string_view text);

// Pairs of hexadecimal digits; none when it is not just these.
std::vector<uint8_t> ParseHexBytes(std::string_view text);

// What stands between the separators: one part more than there are of them.
std::vector<std::string_view> SplitAt(std::string_view text, char separator);

}  // namespace tools
