#include "full_state.h"

#include <fmt/format.h>

#include <cstring>
#include <string>
#include <utility>

namespace {

using namespace vdrsim;

// Each value is the next one. Structures are taken apart by their members, so that one which gains a
// member does not compile here.
class Filler {
 public:
  template <typename Number>
  requires std::is_integral_v<Number> || std::is_same_v<Number, Count>
  void Fill(Number& number) { number = static_cast<Number>(Next()); }
  void Fill(bool& truth) { truth = true; }
  void Fill(std::string& text) { text = fmt::format("t{}", Next()); }
  template <size_t Size>
  void Fill(std::array<std::byte, Size>& bytes) {
    bytes.fill(static_cast<std::byte>(Next()));
    bytes.back() = static_cast<std::byte>(number_ >> 8);
  }
  template <typename Value>
  void Fill(std::optional<Value>& value) {
    Fill(value.emplace());
  }
  template <typename Value>
  void Fill(std::vector<Value>& values) {
    for (int count = 0; count < 2; ++count) Fill(values.emplace_back());
  }
  template <typename Value>
  void Fill(std::set<Value>& values) {
    for (int count = 0; count < 2; ++count) {
      Value value{};
      Fill(value);
      values.insert(value);
    }
  }
  template <typename Key, typename Object>
  void Fill(Table<Key, Object>& table) {
    for (int count = 0; count < 2; ++count) {
      Key key{};
      Fill(key);
      table.Set(key, 2, [this](Object& object) {
        Fill(object);
        return 0;
      });
    }
  }
  void Fill(std::array<uint64_t, 3>& numbers) {
    for (uint64_t& number : numbers) number = Next() << 40;
  }

  void Fill(Counts& counts) {
    auto& [sets, deletes, lookups, failures] = counts;
    FillAll(sets, deletes, lookups, failures);
  }
  void Fill(Counters& counters) { Fill(counters.counts()); }

  // Half of them of each family, and no more is held than the family has.
  void Fill(LifAddress& object) {
    auto& [family, address, mask, prefixLength] = object;
    if (Next() % 2 == 0) {
      family = LifAddress::kIpv6;
      FillAll(address[0], address[1], address[2], address[3], prefixLength);
    } else {
      FillAll(address[0], mask);
    }
  }
  void Fill(RelayServer& object) {
    auto& [address, family] = object;
    Fill(address);
    family = Next() % 2 == 0 ? LifAddress::kIpv6 : LifAddress::kIpv4;
  }
  void Fill(BridgeEndpoint& object) {
    auto& [second, fourth, fifth, value1, value2, tag, flag1, flag2, counters] = object;
    FillAll(second, fourth, fifth, value1, value2, tag, flag1, flag2, counters);
  }
  void Fill(Bridge& object) {
    auto& [isEnabled, counters] = object;
    FillAll(isEnabled, counters);
  }
  void Fill(FdbTableName& object) {
    auto& [segment, selector] = object;
    FillAll(segment, selector);
  }
  void Fill(FdbEntry& object) {
    auto& [value, flag] = object;
    FillAll(value, flag);
  }
  void Fill(Bridging& object) {
    auto& [bridges, forwarding, replicationMode, haAdminState] = object;
    FillAll(bridges, forwarding, replicationMode, haAdminState);
  }
  void Fill(BridgeCluster& object) {
    auto& [nodes, profile, value1, value2, debugLevel] = object;
    FillAll(nodes, profile, value1, value2, debugLevel);
  }
  void Fill(BfdPortConnection& object) {
    auto& [name2, mac] = object;
    FillAll(name2, mac);
  }
  void Fill(TransportNode& object) {
    auto& [name1, name2, name3, value, bytes] = object;
    FillAll(name1, name2, name3, value, bytes);
  }
  void Fill(Connection& object) {
    auto& [second, fourth, fifth, sixth, seventh] = object;
    FillAll(second, fourth, fifth, sixth, seventh);
  }
  void Fill(E2i& object) {
    auto& [value2, mac, value4, value5] = object;
    FillAll(value2, mac, value4, value5);
  }
  void Fill(PhysicalMac& object) {
    auto& [value] = object;
    Fill(value);
  }
  // The text says the bytes.
  void Fill(Neighbour& object) {
    auto& [text, mac] = object;
    mac = {std::byte{2}, std::byte(Next()), std::byte(Next())};
    text = fmt::format("02-{:02X}-{:02X}-00-00-00", mac[1], mac[2]);
  }
  void Fill(PolicyArgs& object) {
    auto& [arg1, arg2] = object;
    FillAll(arg1, arg2);
  }
  void Fill(Policy& object) {
    auto& [arg3] = object;
    Fill(arg3);
  }
  void Fill(PolicyTable& object) {
    auto& [name] = object;
    Fill(name);
  }
  void Fill(LifPolicyKey& object) {
    auto& [type, arg1, arg2, arg3, flags, ifName] = object;
    FillAll(type, arg1, arg2, arg3, flags, ifName);
  }
  void Fill(PolicyTableRef& object) {
    auto& [entries] = object;
    Fill(entries);
  }
  void Fill(RouteKey& object) {
    auto& [destination, mask, third, interface] = object;
    FillAll(destination, mask, third, interface);
  }
  void Fill(Route& object) {
    auto& [flags] = object;
    Fill(flags);
  }
  void Fill(Ipv6RouteKey& object) {
    auto& [destination, prefixLength, gateway, interface] = object;
    FillAll(destination, prefixLength, gateway, interface);
  }
  void Fill(RemoteReceiver& object) {
    auto& [c, d, e] = object;
    FillAll(c, d, e);
  }
  void Fill(McastGroup& object) {
    auto& [local, remote] = object;
    FillAll(local, remote);
  }
  void Fill(Multicast& object) {
    auto& [groups, router] = object;
    FillAll(groups, router);
  }
  void Fill(FullSyncSaves& object) {
    auto& [count, lastFlag] = object;
    FillAll(count, lastFlag);
  }
  void Fill(SoftRss& object) {
    auto& [qword0, entryCount, indirection, counters] = object;
    FillAll(qword0, indirection, counters);
    entryCount = 100 + static_cast<uint32_t>(Next() % 29);
  }
  void Fill(PublicAddress& object) {
    auto& [c, d, items] = object;
    FillAll(c, d, items);
  }
  void Fill(PublicAddresses& object) {
    auto& [entries, itemCount] = object;
    Fill(entries);
    itemCount = 4;
  }
  void Fill(Instance::McastRouting& object) {
    auto& [name2, value1, value2, value3, flag] = object;
    FillAll(name2, value1, value2, value3, flag);
  }
  void Fill(LocalReceiver&) {}
  void Fill(LifPolicy&) {}
  void Fill(Ipv6Route&) {}
  void Fill(Lif& object) {
    auto& [auxName, a3, a4, a5, a6, a7, extra, flags, mode, isEnabled, isUnderVxlanControl,
           routesMulticast, diIp, vxlanMulticastIp, mtu, addresses, relayServers, endpoints, arps,
           proxyArps, ipv6Neighbours, ipv6Proxies, policies, ref, counters, cachedCounts] = object;
    FillAll(auxName, a3, a4, a5, a6, a7, extra, flags, mode, isEnabled, isUnderVxlanControl,
            routesMulticast, diIp, vxlanMulticastIp, mtu, addresses, relayServers, endpoints,
            ipv6Neighbours, policies, ref, counters, cachedCounts);
    FillIpv4(arps, true);
    FillIpv4(proxyArps, false);
    ipv6Proxies.Set(IpAddressOf(Next(), Next()), 1, [](Neighbour&) { return 0; });
  }
  void Fill(Instance& object) {
    auto& [second, fourth, flag, text, tunables, tunablesValue, cpAddress, cpSyncState,
           mcastRouting, lifs, bridgeLifs, routes, ipv6Routes, bridging, multicast, policies,
           counters] = object;
    FillAll(second, fourth, flag, text, tunables, tunablesValue, cpAddress, cpSyncState,
            mcastRouting, lifs, bridgeLifs, routes, ipv6Routes, bridging, multicast, policies,
            counters);
  }
  void Fill(State& object) {
    auto& [instances, logLevel, extendedLogLevel, statsLevel, queueSize, preUnload, cpActivation,
           connections, policies, policyTables, e2i, physicalMacs, saves, softRss, publicAddresses,
           clusters, ports, transportNode, counters] = object;
    FillAll(instances, logLevel, extendedLogLevel, statsLevel, queueSize, preUnload, cpActivation,
            connections, policies, policyTables, e2i, physicalMacs, saves, softRss, publicAddresses,
            clusters, ports, transportNode, counters);
  }

 private:
  uint64_t Next() { return ++number_; }

  template <typename... Members>
  void FillAll(Members&... members) {
    (Fill(members), ...);
  }

  void FillIpv4(Neighbours& neighbours, bool hasMac) {
    neighbours.Set(IpAddressOf(Next(), 0), 1, [&](Neighbour& neighbour) {
      if (hasMac) Fill(neighbour);
      return 0;
    });
  }

  uint64_t number_ = 1000;
};

}  // namespace

vdrsim::State MakeFullState() {
  vdrsim::State state;
  Filler().Fill(state);
  return state;
}
