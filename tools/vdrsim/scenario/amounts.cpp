#include "scenario/amounts.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "datapath/caps.h"

namespace vdrsim {

namespace {

constexpr Amount kInstances = &Amounts::instances;
constexpr Amount kLifs = &Amounts::lifs;

constexpr ObjectKind kKinds[] = {
    {"--instances", "router instances", kInstances, nullptr, kMostInstances},
    {"--lifs", "LIFs of each instance", kLifs, kInstances, kMostLifs},
    {"--addresses", "IPv4 addresses of each LIF", &Amounts::addresses, kLifs, kMostLifAddresses},
    {"--relay-servers", "DHCP relay servers of each LIF", &Amounts::relayServers, kLifs,
     kMostRelayServers},
    {"--arps", "ARP entries of each LIF", &Amounts::arps, kLifs, kMostNeighbours},
    {"--proxy-arps", "proxy ARP entries of each LIF", &Amounts::proxyArps, kLifs, kMostNeighbours},
    {"--ipv6-neighbours", "IPv6 neighbours of each LIF", &Amounts::ipv6Neighbours, kLifs,
     kMostNeighbours},
    {"--ipv6-proxies", "IPv6 proxies of each LIF", &Amounts::ipv6Proxies, kLifs, kMostNeighbours},
    {"--lif-policies", "policies of type 4 of each LIF", &Amounts::lifPolicies, kLifs,
     kMostLifPolicies},
    {"--policy-table-refs", "policy tables that each LIF refers to", &Amounts::policyTableRefs,
     kLifs, kMostPolicyTableRefs},
    {"--bridge-lifs", "bridge LIFs of each instance", &Amounts::bridgeLifs, kInstances, kMostLifs},
    {"--endpoints", "endpoints of each bridge LIF", &Amounts::endpoints, &Amounts::bridgeLifs,
     kMostBridgeEndpoints},
    {"--routes", "IPv4 routes of each instance", &Amounts::routes, kInstances, kMostRoutes},
    {"--ipv6-routes", "IPv6 routes of each instance", &Amounts::ipv6Routes, kInstances,
     kMostIpv6Routes},
    {"--bridges", "bridges of each instance", &Amounts::bridges, kInstances, kMostBridges},
    {"--fdb-tables", "forwarding tables of each instance", &Amounts::fdbTables, kInstances, kNoCap},
    {"--fdb-entries", "entries of each forwarding table", &Amounts::fdbEntries, &Amounts::fdbTables,
     kMostFdbEntries},
    {"--groups", "multicast groups of each instance", &Amounts::groups, kInstances,
     kMostMcastGroups},
    {"--local-receivers", "local receivers of each group", &Amounts::localReceivers,
     &Amounts::groups, kMostLocalReceivers},
    {"--remote-receivers", "remote receivers of each group", &Amounts::remoteReceivers,
     &Amounts::groups, kMostRemoteReceivers},
    {"--instance-policies", "LIF policies of each instance that name no LIF",
     &Amounts::instancePolicies, kInstances, kMostLifPolicies},
    {"--connections", "connections", &Amounts::connections, nullptr, kMostConnections},
    {"--policy-keys", "keys that have policies", &Amounts::policyKeys, nullptr, kNoCap},
    {"--policies", "policies of each key", &Amounts::policies, &Amounts::policyKeys, kMostPolicies},
    {"--policy-tables", "policy tables", &Amounts::policyTables, nullptr, kMostPolicyTables},
    {"--e2i-entries", "entries of the edge-to-infrastructure mapping", &Amounts::e2iEntries,
     nullptr, kMostE2i},
    {"--physical-macs", "physical MACs", &Amounts::physicalMacs, nullptr, kMostPhysicalMacs},
    {"--soft-rss", "software RSS objects", &Amounts::softRss, nullptr, kNoCap},
    {"--public-addresses", "VM public addresses", &Amounts::publicAddresses, nullptr, kNoCap},
    {"--public-items", "items of each public address", &Amounts::publicItems,
     &Amounts::publicAddresses, kMostPublicItems},
    {"--clusters", "bridge clusters", &Amounts::bridgeClusters, nullptr, kMostBridgeClusters},
    {"--nodes", "nodes of each cluster", &Amounts::clusterNodes, &Amounts::bridgeClusters,
     kMostClusterNodes},
    {"--bfd-ports", "BFD port connections", &Amounts::bfdPorts, nullptr, kMostBfdPortConnections},
    {"--transport-nodes", "transport nodes", &Amounts::transportNodes, nullptr, 1},
};

void Refuse(size_t wanted, size_t most, std::string_view what) {
  if (wanted > most) {
    throw ImpossibleScenario(
        fmt::format("{} {} are more than the {} that there can be", wanted, what, most));
  }
}

// Groups and public addresses are there as long as they hold something, and what bridges share as
// long as there is one of them.
void AddWhatOthersNeed(Amounts& amounts) {
  const auto atLeastOne = [](uint32_t& amount) { amount = std::max(amount, 1U); };
  for (auto kind = std::rbegin(kKinds); kind != std::rend(kKinds); ++kind) {
    if (kind->parent && amounts.*kind->amount > 0) atLeastOne(amounts.*kind->parent);
  }
  if (amounts.fdbTables > 0) atLeastOne(amounts.bridges);
  if (amounts.groups > 0 && amounts.remoteReceivers == 0) atLeastOne(amounts.localReceivers);
  if (amounts.publicAddresses > 0) atLeastOne(amounts.publicItems);
  if (amounts.policyKeys > 0) atLeastOne(amounts.policies);
}

}  // namespace

std::span<const ObjectKind> ObjectKinds() { return kKinds; }

Amounts Complete(Amounts amounts) {
  AddWhatOthersNeed(amounts);
  for (const ObjectKind& kind : kKinds) Refuse(amounts.*kind.amount, kind.most, kind.what);
  const size_t instances = amounts.instances;
  const size_t lifs = amounts.lifs;
  Refuse(instances * amounts.bridges, kMostBridges, "bridges in all instances");
  Refuse(instances * amounts.bridgeLifs * amounts.endpoints, kMostBridgeEndpoints,
         "endpoints in all instances");
  Refuse(lifs * amounts.arps, kMostNeighbours, "ARP entries in each instance");
  Refuse(lifs * amounts.proxyArps, kMostNeighbours, "proxy ARP entries in each instance");
  Refuse(lifs * (size_t{amounts.ipv6Neighbours} + amounts.ipv6Proxies), kMostNeighbours,
         "IPv6 neighbours and proxies in each instance");
  Refuse(size_t{amounts.bridgeClusters} * amounts.clusterNodes, kMostClusterNodes,
         "nodes in all clusters");
  Refuse(amounts.publicAddresses *
             (kPublicAddressBytes + size_t{amounts.publicItems} * kPublicItemBytes),
         kMostPublicAddressBytes, "bytes of public addresses");
  return amounts;
}

}  // namespace vdrsim
