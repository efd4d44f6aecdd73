#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "datapath/counters.h"
#include "datapath/table.h"
#include "requests/input.h"

namespace vdrsim {

// An endpoint of a bridge LIF.
struct BridgeEndpoint {
  std::string secondName{};
  std::string fourthName{};
  std::string fifthName{};
  uint32_t value1 = 0;  // the value of its bridge
  uint32_t value2 = 0;
  uint16_t tag = 0;  // the network that it is a port of
  uint8_t flag1 = 0;
  uint8_t flag2 = 0;

  Counters counters{};

  bool operator==(const BridgeEndpoint&) const = default;
};

struct Bridge {
  bool isEnabled = false;

  Counters counters{};

  bool operator==(const Bridge&) const = default;
};

// What selects one table of a forwarding database.
struct FdbTableName {
  uint32_t segment = 0;
  uint32_t selector = 0;

  auto operator<=>(const FdbTableName&) const = default;
};

struct FdbEntry {
  uint32_t value = 0;
  uint8_t flag = 0;

  bool operator==(const FdbEntry&) const = default;
};

// The bridges of an instance, and what they have in common. It ends with the last of them.
struct Bridging {
  Table<uint32_t, Bridge> bridges{};
  Table<FdbTableName, Table<MacAddress, FdbEntry>> forwarding{};
  uint32_t replicationMode = 0;
  uint32_t haAdminState = 0;

  bool operator==(const Bridging&) const = default;
};

struct BridgeCluster {
  Table<std::string, MacAddress> nodes{};
  uint8_t profile = 0;
  uint32_t profileValue1 = 0;
  uint32_t profileValue2 = 0;
  uint8_t debugLevel = 0;

  bool operator==(const BridgeCluster&) const = default;
};

struct BfdPortConnection {
  std::string name2{};
  MacAddress mac{};

  bool operator==(const BfdPortConnection&) const = default;
};

struct TransportNode {
  std::string name1{};
  std::string name2{};
  std::string name3{};
  uint32_t value = 0;
  std::array<std::byte, 64> bytes{};

  bool operator==(const TransportNode&) const = default;
};

}  // namespace vdrsim
