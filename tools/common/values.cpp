#include "common/values.h"

#include <arpa/inet.h>

#include <algorithm>
#include <string>

#include "common/digits.h"

namespace tools {

std::optional<uint64_t> ParseNumber(std::string_view text) {
  if (text.starts_with("0x") || text.starts_with("0X")) {
    return ParseDigits<uint64_t>(text.substr(2), 16);
  }
  return ParseDigits<uint64_t>(text, 10);
}

std::optional<uint32_t> ParseIpv4(std::string_view text) {
  in_addr address{};
  if (inet_pton(AF_INET, std::string(text).c_str(), &address) != 1) return std::nullopt;
  return address.s_addr;
}

std::optional<std::array<uint8_t, 16>> ParseIpv6(std::string_view text) {
  std::array<uint8_t, 16> address{};
  if (inet_pton(AF_INET6, std::string(text).c_str(), address.data()) != 1) return std::nullopt;
  return address;
}

std::optional<std::array<uint8_t, 6>> ParseMac(std::string_view text) {
  std::array<uint8_t, 6> mac{};
  const char* rest = text.data();
  const char* const end = rest + text.size();
  for (uint8_t& byte : mac) {
    if (&byte != mac.data()) {
      if (rest == end || (*rest != ':' && *rest != '-')) return std::nullopt;
      ++rest;
    }
    const char* const digits = rest;
    for (; rest != end && rest - digits < 2 && HexDigit(*rest) >= 0; ++rest) {
      byte = static_cast<uint8_t>(byte * 16 + HexDigit(*rest));
    }
    if (rest == digits) return std::nullopt;
  }
  return rest == end ? std::optional(mac) : std::nullopt;
}

std::vector<uint8_t> ParseHexBytes(std::string_view text) {
  std::vector<uint8_t> bytes;
  for (; !text.empty(); text.remove_prefix(2)) {
    const auto byte = text.size() < 2 ? std::nullopt : ParseDigits<uint8_t>(text.substr(0, 2), 16);
    if (!byte) return {};
    bytes.push_back(*byte);
  }
  return bytes;
}

std::vector<std::string_view> SplitAt(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    parts.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

}  // namespace tools
