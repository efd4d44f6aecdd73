#include "state/state_rules.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "common/escapes.h"
#include "datapath/caps.h"
#include "state/shape.h"

namespace vdrsim {

namespace {

using shape::Unfit;

void RefuseMore(size_t count, size_t most, std::string_view path, std::string_view what) {
  if (count > most) {
    throw Unfit(fmt::format("{}: there are {} {}, and there can be {}", path, count, what, most));
  }
}

// All that the elements of a table hold.
template <typename Held, typename Count>
size_t Sum(const Held& held, const Count& count) {
  size_t sum = 0;
  for (const auto& [key, object] : held) sum += count(object);
  return sum;
}

void JudgeLists(const State& state) {
  const auto bridges = [](const Instance& instance) { return instance.bridging.bridges.size(); };
  const auto endpoints = [](const Instance& instance) {
    return Sum(instance.bridgeLifs, [](const Lif& lif) { return lif.endpoints.size(); });
  };
  const auto nodes = [](const BridgeCluster& cluster) { return cluster.nodes.size(); };
  RefuseMore(Sum(state.instances, bridges), kMostBridges, "/instances", "bridges in all");
  RefuseMore(Sum(state.instances, endpoints), kMostBridgeEndpoints, "/instances",
             "bridge endpoints in all");
  RefuseMore(Sum(state.bridgeClusters, nodes), kMostClusterNodes, "/bridgeClusters",
             "nodes in all");
}

// A list shows those of all LIFs together.
void JudgeNeighbours(const std::string& name, const Instance& instance) {
  const std::string path = fmt::format("/instances/{}/lifs", tools::Printable(name));
  const auto judge = [&](std::string_view what, const auto& count) {
    RefuseMore(Sum(instance.lifs, count), kMostNeighbours, path, what);
  };
  judge("arps in all", [](const Lif& lif) { return lif.arps.size(); });
  judge("proxyArps in all", [](const Lif& lif) { return lif.proxyArps.size(); });
  judge("ipv6Neighbours and ipv6Proxies in all",
        [](const Lif& lif) { return lif.ipv6Neighbours.size() + lif.ipv6Proxies.size(); });
}

// An address is known by itself.
void JudgeAddresses(const std::string& name, const Instance& instance) {
  for (const auto& [lifName, lif] : instance.lifs) {
    std::set<std::array<uint32_t, 5>> known;
    for (const auto& [family, address, mask, prefixLength] : lif.addresses) {
      if (known.insert({family, address[0], address[1], address[2], address[3]}).second) continue;
      throw Unfit(fmt::format("/instances/{}/lifs/{}/addresses: an address is there twice",
                              tools::Printable(name), tools::Printable(lifName)));
    }
  }
}

void JudgeGroups(const std::string& name, const Instance& instance) {
  const auto& groups = instance.multicast.groups;
  const bool isAnyEmpty = std::any_of(groups.begin(), groups.end(),
                                      [](const auto& entry) { return entry.second.IsEmpty(); });
  if (isAnyEmpty) {
    throw Unfit(fmt::format("/instances/{}/multicast/groups: a group without receivers is none",
                            tools::Printable(name)));
  }
}

void CompletePublicAddresses(PublicAddresses& addresses) {
  for (const auto& [address, entry] : addresses.entries) {
    if (entry.IsEmpty()) throw Unfit("/publicAddresses: an address without items is none");
    addresses.itemCount += entry.items.size();
  }
  RefuseMore(
      addresses.entries.size() * kPublicAddressBytes + addresses.itemCount * kPublicItemBytes,
      kMostPublicAddressBytes, "/publicAddresses", "bytes in their list");
}

}  // namespace

void Complete(State& state) {
  JudgeLists(state);
  for (const auto& [name, instance] : state.instances) {
    JudgeNeighbours(name, instance);
    JudgeAddresses(name, instance);
    JudgeGroups(name, instance);
  }
  if (std::as_const(state).physicalMacs.Find(MacAddress{})) {
    throw Unfit("/physicalMacs: an address of zeros names none");
  }
  CompletePublicAddresses(state.publicAddresses);
}

}  // namespace vdrsim
