#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "datapath/bridge_state.h"
#include "datapath/connection_state.h"
#include "datapath/counters.h"
#include "datapath/e2i_state.h"
#include "datapath/lif_state.h"
#include "datapath/mcast_state.h"
#include "datapath/policy_state.h"
#include "datapath/route_state.h"
#include "datapath/services_state.h"
#include "datapath/table.h"

// All that the simulated datapath remembers: plain values, one structure an object, keyed by what
// names it and held by what it dies with. A copy of any of them is a snapshot.
namespace vdrsim {

// A router instance.
struct Instance {
  uint32_t second = 0;
  uint32_t fourth = 0;
  uint8_t flag = 0;
  std::string text{};
  std::string tunables{};
  uint32_t tunablesValue = 0;
  uint32_t cpAddress = 0;
  uint32_t cpSyncState = 0;

  struct McastRouting {
    std::string name2{};
    uint32_t value1 = 0;
    uint32_t value2 = 0;
    uint16_t value3 = 0;
    uint8_t flag = 0;

    bool operator==(const McastRouting&) const = default;
  } mcastRouting{};

  Table<std::string, Lif> lifs{};
  Table<std::string, Lif> bridgeLifs{};
  Table<RouteKey, Route> routes{};
  Table<Ipv6RouteKey, Ipv6Route> ipv6Routes{};
  Bridging bridging{};
  Multicast multicast{};
  LifPolicies policies{};  // those that name no LIF

  Counters counters{};

  bool operator==(const Instance&) const = default;
};

// It lives as long as the run.
struct State {
  Table<std::string, Instance> instances{};

  uint32_t logLevel = 0;
  uint32_t extendedLogLevel = 0;
  uint32_t statsLevel = 0;
  uint32_t txDispatchQueueSize = 0;
  bool preUnloadAnnounced = false;
  uint32_t cpActivation = 0;

  Table<std::string, Connection> connections{};
  Table<uint32_t, Policies> policies{};  // by key
  Table<uint32_t, PolicyTable> policyTables{};
  Table<uint32_t, E2i> e2iEntries{};
  Table<MacAddress, PhysicalMac> physicalMacs{};
  FullSyncSaves fullSyncSaves{};
  Table<std::string, SoftRss> softRss{};
  PublicAddresses publicAddresses{};

  Table<std::string, BridgeCluster> bridgeClusters{};
  Table<std::string, BfdPortConnection> bfdPortConnections{};
  std::optional<TransportNode> transportNode{};

  Counters counters{};

  bool operator==(const State&) const = default;
};

}  // namespace vdrsim
