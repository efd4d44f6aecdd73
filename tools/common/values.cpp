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
  for (uint8_t& byte : mac) {
    const std::size_t end = std::min(text.find_first_of(":-"), text.size());
    const auto value = ParseDigits<uint8_t>(text.substr(0, end), 16);
    const bool last = &byte == &mac.back();
    if (!value || end > 2 || (end == text.size()) != last) return std::nullopt;
    byte = *value;
    text.remove_prefix(last ? end : end + 1);
  }
  return mac;
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
