#include "values.h"

#include <arpa/inet.h>
#include <fmt/format.h>

#include <algorithm>
#include <bit>

#include "common/digits.h"

namespace vdrctl {

namespace {

using tools::ParseDigits;

// Splits at the only slash.
std::optional<std::pair<std::string_view, std::string_view>> SplitAtSlash(std::string_view text) {
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos) return std::nullopt;
  return std::pair(text.substr(0, slash), text.substr(slash + 1));
}

std::optional<uint32_t> MaskOfLength(std::string_view text) {
  const auto length = ParseDigits<uint8_t>(text, 10);
  if (!length || *length > 32) return std::nullopt;
  return htonl(*length == 0 ? 0 : ~uint32_t{0} << (32 - *length));
}

// Ones and then zeros: anything else is a slip of the hand.
std::optional<uint32_t> Netmask(std::string_view text) {
  const auto mask = ParseIpv4(text);
  if (!mask) return std::nullopt;
  const uint32_t bits = ntohl(*mask);
  return std::countl_one(bits) + std::countr_zero(bits) >= 32 ? mask : std::nullopt;
}

}  // namespace

std::optional<Prefix> ParsePrefix(std::string_view text) {
  const auto parts = SplitAtSlash(text);
  if (!parts) return std::nullopt;
  const auto address = ParseIpv4(parts->first);
  const bool dotted = parts->second.find('.') != std::string_view::npos;
  const auto mask = dotted ? Netmask(parts->second) : MaskOfLength(parts->second);
  if (!address || !mask) return std::nullopt;
  return Prefix{*address, *mask};
}

std::optional<Ipv6> ParseIpv6(std::string_view text) {
  const auto address = tools::ParseIpv6(text);
  if (!address) return std::nullopt;
  return std::bit_cast<Ipv6>(*address);
}

std::optional<Prefix6> ParsePrefix6(std::string_view text) {
  const auto parts = SplitAtSlash(text);
  if (!parts) return std::nullopt;
  const auto address = ParseIpv6(parts->first);
  const auto length = ParseDigits<uint8_t>(parts->second, 10);
  if (!address || !length || *length > 128) return std::nullopt;
  return Prefix6{*address, *length};
}

std::optional<MacValue> ParseMac(std::string_view text) {
  const auto mac = tools::ParseMac(text);
  if (!mac) return std::nullopt;
  return std::bit_cast<MacValue>(*mac);
}

std::string MacText(const MacValue& mac) {
  return fmt::format("{:02x}", fmt::join(mac.bytes, ":"));
}

std::optional<bool> ParseSwitch(std::string_view text) {
  if (text == "on") return true;
  if (text == "off") return false;
  return std::nullopt;
}

std::vector<uint64_t> ParseNumbers(std::string_view text, char separator, uint64_t largest) {
  std::vector<uint64_t> numbers;
  for (const std::string_view part : SplitAt(text, separator)) {
    const auto number = ParseNumber(part);
    if (!number || *number > largest) return {};
    numbers.push_back(*number);
  }
  return numbers;
}

}  // namespace vdrctl
