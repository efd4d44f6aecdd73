#pragma once

#include <vdrzax/channel.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/values.h"

// Values as people write them. Each reader takes the whole text or nothing; addresses come out in
// network byte order, as the datapath has them.

namespace vdrctl {

// An IPv4 address and the netmask that was written behind it.
struct Prefix {
  uint32_t address;
  uint32_t mask;
};

// The two halves of an IPv6 address.
struct Ipv6 {
  uint64_t high;
  uint64_t low;
};

struct Prefix6 {
  Ipv6 address;
  uint8_t length;
};

using tools::ParseHexBytes;
using tools::ParseIpv4;
using tools::ParseNumber;
using tools::SplitAt;

// "10.0.0.0/24" or "10.0.0.0/255.255.255.0".
std::optional<Prefix> ParsePrefix(std::string_view text);

std::optional<Ipv6> ParseIpv6(std::string_view text);

// "2001:db8::/32".
std::optional<Prefix6> ParsePrefix6(std::string_view text);

std::optional<MacValue> ParseMac(std::string_view text);

// "02:00:5e:10:ab:ff", as commands that take the text itself want it.
std::string MacText(const MacValue& mac);

// "on" or "off".
std::optional<bool> ParseSwitch(std::string_view text);

// Numbers up to `largest` with a separator between them, at least one; none when one is not such.
std::vector<uint64_t> ParseNumbers(std::string_view text, char separator, uint64_t largest);

}  // namespace vdrctl
