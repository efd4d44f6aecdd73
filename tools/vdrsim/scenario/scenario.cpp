#include "scenario/scenario.h"

#include <endian.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <bit>
#include <string>

#include "datapath/caps.h"

namespace vdrsim {

namespace {

std::byte ByteOf(uint32_t number, int shift) { return static_cast<std::byte>(number >> shift); }

// FIRST.x.y.z with the number in x, y and z.
Ipv4 Ipv4At(uint8_t first, uint32_t number) {
  return {std::byte{first}, ByteOf(number, 16), ByteOf(number, 8), ByteOf(number, 0)};
}

uint32_t WordAt(uint8_t first, uint32_t number) { return WordOf(Ipv4At(first, number)); }

IpAddress LongAt(uint8_t first, uint32_t number) { return IpAddressOf(WordAt(first, number), 0); }

// 2001:db8:NET::x with the number in the last two groups.
IpAddress Ipv6At(uint32_t net, uint32_t number) {
  IpAddress address{std::byte{0x20}, std::byte{0x01}, std::byte{0x0d}, std::byte{0xb8}};
  address[4] = ByteOf(net, 8);
  address[5] = ByteOf(net, 0);
  const Ipv4 last = std::bit_cast<Ipv4>(htobe32(number));
  std::ranges::copy(last, address.end() - 4);
  return address;
}

// 02:KIND and the number.
MacAddress MacAt(uint8_t kind, uint32_t number) {
  return {std::byte{2},       std::byte{kind},   ByteOf(number, 24),
          ByteOf(number, 16), ByteOf(number, 8), ByteOf(number, 0)};
}

const Ipv4 kNetmask = {std::byte{255}, std::byte{255}, std::byte{255}, std::byte{0}};

// Adds as many objects as asked for: key(number) and make(number, object), from 1 on.
template <typename Key, typename Object, typename MakeKey, typename Make>
void Add(Table<Key, Object>& table, uint32_t count, const MakeKey& key, const Make& make) {
  for (uint32_t number = 1; number <= count; ++number) {
    table.Set(key(number), kNoCap, [&](Object& object) {
      make(number, object);
      return 0;
    });
  }
}

// The same for objects that are known by a name and their number.
template <typename Object, typename Make>
void AddNamed(Table<std::string, Object>& table, uint32_t count, std::string_view name,
              const Make& make) {
  Add(
      table, count, [&](uint32_t number) { return fmt::format("{}-{}", name, number); }, make);
}

constexpr auto kAsItIs = [](uint32_t number) { return number; };
constexpr auto kNothing = [](uint32_t, auto&) {};

// The interface of a route: the LIFs in turn, or none when there are none.
std::string InterfaceOf(const Amounts& amounts, uint32_t number) {
  return amounts.lifs == 0 ? "" : fmt::format("lif-{}", (number - 1) % amounts.lifs + 1);
}

class LifMaker {
 public:
  LifMaker(const Amounts& amounts, uint32_t number) : amounts_(amounts), number_(number) {}

  void Make(Lif& lif) const {
    lif.auxName = fmt::format("uplink-{}", number_);
    lif.a5 = (number_ - 1) % 4094 + 1;
    lif.extra = MacAt(1, number_);
    lif.isEnabled = true;
    lif.mtu = 1500;
    AddAddresses(lif);
    AddNeighbours(lif);
    AddPolicies(lif);
  }

 private:
  void AddAddresses(Lif& lif) const {
    for (uint32_t number = 1; number <= amounts_.addresses; ++number) {
      lif.addresses.push_back(
          {.address = {WordAt(10, number_ << 8 | number)}, .mask = WordOf(kNetmask)});
    }
    for (uint32_t number = 1; number <= amounts_.relayServers; ++number) {
      lif.relayServers.push_back({.address = LongAt(11, number), .family = LifAddress::kIpv4});
    }
  }

  void AddNeighbours(Lif& lif) const {
    const auto ipv4 = [this](uint8_t first, uint32_t count) {
      return [=, this](uint32_t number) { return LongAt(first, (number_ - 1) * count + number); };
    };
    const auto ipv6 = [this](uint32_t net, uint32_t count) {
      return [=, this](uint32_t number) { return Ipv6At(net, (number_ - 1) * count + number); };
    };
    const auto neighbour = [this](uint32_t number, Neighbour& made) {
      made.mac = MacAt(2, number_ << 16 | number);
      made.macText = fmt::format("{:02x}", fmt::join(made.mac, ":"));
    };
    Add(lif.arps, amounts_.arps, ipv4(20, amounts_.arps), neighbour);
    Add(lif.proxyArps, amounts_.proxyArps, ipv4(30, amounts_.proxyArps), kNothing);
    Add(lif.ipv6Neighbours, amounts_.ipv6Neighbours, ipv6(1, amounts_.ipv6Neighbours), neighbour);
    Add(lif.ipv6Proxies, amounts_.ipv6Proxies, ipv6(2, amounts_.ipv6Proxies), kNothing);
  }

  void AddPolicies(Lif& lif) const {
    const auto key = [this](uint32_t number) {
      return LifPolicyKey{.type = 4,
                          .arg1 = WordAt(40, number << 8),
                          .arg2 = WordOf(kNetmask),
                          .ifName = InterfaceOf(amounts_, number)};
    };
    Add(lif.policies, amounts_.lifPolicies, key, kNothing);
    if (amounts_.policyTableRefs == 0) return;
    auto& entries = lif.policyTableRef.emplace().entries;
    for (uint64_t number = 1; number <= amounts_.policyTableRefs; ++number) {
      entries.push_back({number, 0, 0});
    }
  }

  const Amounts& amounts_;
  uint32_t number_;
};

class InstanceMaker {
 public:
  InstanceMaker(const Amounts& amounts, uint32_t number) : amounts_(amounts), number_(number) {}

  Instance Make() const {
    Instance instance{.second = number_, .flag = 1};
    AddLifs(instance);
    AddRoutes(instance);
    AddBridging(instance.bridging);
    AddGroups(instance.multicast);
    const auto key = [this](uint32_t number) {
      return LifPolicyKey{.type = 1,
                          .arg1 = WordAt(41, number << 8),
                          .arg2 = WordOf(kNetmask),
                          .ifName = InterfaceOf(amounts_, number)};
    };
    Add(instance.policies, amounts_.instancePolicies, key, kNothing);
    return instance;
  }

 private:
  // Commands name a bridge LIF without its instance, so no other instance has one of that name.
  void AddLifs(Instance& instance) const {
    AddNamed(instance.lifs, amounts_.lifs, "lif",
             [this](uint32_t number, Lif& lif) { LifMaker(amounts_, number).Make(lif); });
    AddNamed(instance.bridgeLifs, amounts_.bridgeLifs, fmt::format("bridge-lif-{}", number_),
             [this](uint32_t lifNumber, Lif& lif) {
               lif.a5 = lifNumber;
               AddNamed(lif.endpoints, amounts_.endpoints, "endpoint",
                        [this](uint32_t number, BridgeEndpoint& made) {
                          made.value1 =
                              amounts_.bridges == 0 ? 0 : (number - 1) % amounts_.bridges + 1;
                          made.value2 = number;
                          made.tag = static_cast<uint16_t>((number - 1) % 4094 + 1);
                        });
             });
  }

  void AddRoutes(Instance& instance) const {
    const auto key = [this](uint32_t number) {
      return RouteKey{.destination = Ipv4At(100, number << 8),
                      .mask = kNetmask,
                      .third = Ipv4At(10, number),
                      .interface = InterfaceOf(amounts_, number)};
    };
    Add(instance.routes, amounts_.routes, key, kNothing);
    const auto ipv6Key = [this](uint32_t number) {
      return Ipv6RouteKey{.destination = Ipv6At(number, 0),
                          .prefixLength = 48,
                          .gateway = Ipv6At(0, number),
                          .interface = InterfaceOf(amounts_, number)};
    };
    Add(instance.ipv6Routes, amounts_.ipv6Routes, ipv6Key, kNothing);
  }

  void AddBridging(Bridging& bridging) const {
    Add(bridging.bridges, amounts_.bridges, kAsItIs,
        [](uint32_t, Bridge& bridge) { bridge.isEnabled = true; });
    const auto table = [](uint32_t number) { return FdbTableName{.segment = number}; };
    Add(bridging.forwarding, amounts_.fdbTables, table,
        [this](uint32_t, Table<MacAddress, FdbEntry>& entries) {
          Add(
              entries, amounts_.fdbEntries, [](uint32_t number) { return MacAt(3, number); },
              [](uint32_t number, FdbEntry& entry) { entry.value = number; });
        });
  }

  void AddGroups(Multicast& multicast) const {
    const auto remote = [](uint32_t number, RemoteReceiver& receiver) {
      receiver = {.c = MacAt(4, number), .d = number};
    };
    Add(
        multicast.groups, amounts_.groups, [](uint32_t number) { return WordAt(239, number); },
        [&](uint32_t, McastGroup& group) {
          AddNamed(group.localReceivers, amounts_.localReceivers, "receiver", kNothing);
          Add(group.remoteReceivers, amounts_.remoteReceivers, kAsItIs, remote);
        });
  }

  const Amounts& amounts_;
  uint32_t number_;
};

class InstanceCursor final : public shape::Cursor {
 public:
  explicit InstanceCursor(const Amounts& amounts) : amounts_(amounts) {}

  bool Next(shape::Element& element) override {
    if (number_ == amounts_.instances) return false;
    ++number_;
    name_ = fmt::format("edge-{}", number_);
    instance_ = InstanceMaker(amounts_, number_).Make();
    element = {&name_, &instance_};
    return true;
  }

 private:
  Amounts amounts_;
  uint32_t number_ = 0;
  std::string name_{};
  Instance instance_{};
};

void AddPublicAddresses(PublicAddresses& addresses, const Amounts& amounts) {
  Add(
      addresses.entries, amounts.publicAddresses,
      [](uint32_t number) { return WordAt(50, number); },
      [&](uint32_t number, PublicAddress& address) {
        address.c = MacAt(5, number);
        for (uint32_t item = 1; item <= amounts.publicItems; ++item) {
          address.items.insert(WordAt(60, item));
        }
      });
  addresses.itemCount = size_t{amounts.publicAddresses} * amounts.publicItems;
}

void AddClusters(State& state, const Amounts& amounts) {
  AddNamed(state.bridgeClusters, amounts.bridgeClusters, "cluster",
           [&](uint32_t clusterNumber, BridgeCluster& cluster) {
             cluster.profile = 1;
             AddNamed(cluster.nodes, amounts.clusterNodes, "node",
                      [&](uint32_t number, MacAddress& mac) {
                        mac = MacAt(6, clusterNumber << 8 | number);
                      });
           });
  AddNamed(state.bfdPortConnections, amounts.bfdPorts, "port",
           [](uint32_t number, BfdPortConnection& port) { port.mac = MacAt(7, number); });
  if (amounts.transportNodes > 0) state.transportNode = TransportNode{.name1 = "transport-node"};
}

}  // namespace

State MakeHost(const Amounts& amounts) {
  State state;
  AddNamed(state.connections, amounts.connections, "connection",
           [](uint32_t number, Connection& connection) { connection.seventh = number; });
  Add(state.policies, amounts.policyKeys, kAsItIs, [&](uint32_t, Policies& policies) {
    Add(
        policies, amounts.policies, [](uint32_t number) { return PolicyArgs{.arg1 = number}; },
        [](uint32_t number, Policy& policy) { policy.arg3 = number; });
  });
  Add(state.policyTables, amounts.policyTables, kAsItIs,
      [](uint32_t number, PolicyTable& table) { table.name = fmt::format("table-{}", number); });
  Add(state.e2iEntries, amounts.e2iEntries, kAsItIs,
      [](uint32_t number, E2i& entry) { entry.mac = MacAt(8, number); });
  Add(
      state.physicalMacs, amounts.physicalMacs, [](uint32_t number) { return MacAt(9, number); },
      [](uint32_t number, PhysicalMac& mac) { mac.value = number; });
  AddNamed(state.softRss, amounts.softRss, "rss", [](uint32_t number, SoftRss& object) {
    object.qword0 = number;
    object.entryCount = kMostRssEntries;
  });
  AddPublicAddresses(state.publicAddresses, amounts);
  AddClusters(state, amounts);
  return state;
}

std::unique_ptr<shape::Cursor> MakeInstances(const Amounts& amounts) {
  return std::make_unique<InstanceCursor>(amounts);
}

}  // namespace vdrsim
