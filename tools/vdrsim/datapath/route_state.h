#pragma once

#include <compare>
#include <cstdint>
#include <string>

#include "datapath/ip_address.h"

namespace vdrsim {

// What names an IPv4 route of an instance: all that its deletion sends.
struct RouteKey {
  Ipv4 destination{};
  Ipv4 mask{};
  Ipv4 third{};
  std::string interface {};  // of whatever name, or none

  auto operator<=>(const RouteKey&) const = default;
};

struct Route {
  uint32_t flags = 0;

  bool operator==(const Route&) const = default;
};

// What names an IPv6 route of an instance, and all there is to know of it.
struct Ipv6RouteKey {
  IpAddress destination{};
  uint8_t prefixLength = 0;
  IpAddress gateway{};
  std::string interface {};

  auto operator<=>(const Ipv6RouteKey&) const = default;
};

struct Ipv6Route {
  bool operator==(const Ipv6Route&) const = default;
};

}  // namespace vdrsim
