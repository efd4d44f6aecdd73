#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "datapath/bridge_state.h"
#include "datapath/counters.h"
#include "datapath/neighbour_state.h"
#include "datapath/policy_state.h"
#include "datapath/table.h"
#include "requests/input.h"

namespace vdrsim {

// An address of a LIF. Families are numbered as in the list of relay servers.
struct LifAddress {
  static constexpr uint32_t kIpv4 = 1;
  static constexpr uint32_t kIpv6 = 3;

  uint32_t family = kIpv4;
  std::array<uint32_t, 4> address{};  // one word for IPv4
  uint32_t mask = 0;                  // IPv4
  uint8_t prefixLength = 0;           // IPv6

  bool operator==(const LifAddress&) const = default;
};

// A DHCP relay server of a LIF.
struct RelayServer {
  std::array<std::byte, 16> address{};
  uint32_t family = 0;

  bool operator==(const RelayServer&) const = default;
};

// A logical interface, or a bridge's.
struct Lif {
  std::string auxName{};
  uint32_t a3 = 0;
  uint32_t a4 = 0;
  uint32_t a5 = 0;
  uint32_t a6 = 0;
  uint32_t a7 = 0;
  MacAddress extra{};
  uint32_t flags = 0;
  uint8_t mode = 0;

  bool isEnabled = false;
  bool isUnderVxlanControl = false;
  bool routesMulticast = false;
  uint32_t diIp = 0;
  uint32_t vxlanMulticastIp = 0;
  uint32_t mtu = 0;
  std::vector<LifAddress> addresses{};
  std::vector<RelayServer> relayServers{};
  Table<std::string, BridgeEndpoint> endpoints{};  // of a bridge LIF

  Neighbours arps{};
  Neighbours proxyArps{};
  Neighbours ipv6Neighbours{};
  Neighbours ipv6Proxies{};
  LifPolicies policies{};
  std::optional<PolicyTableRef> policyTableRef{};

  Counters counters{};
  Counts cachedCounts{};

  bool operator==(const Lif&) const = default;
};

}  // namespace vdrsim
