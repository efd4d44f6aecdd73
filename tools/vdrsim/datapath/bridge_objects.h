#pragma once

#include <cerrno>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "datapath/objects.h"
#include "datapath/state.h"

// How the handlers of bridging reach what a command names.
namespace vdrsim {

using Instances = Table<std::string, Instance>;

// Does `action` on the bridging of the named instance: ENOENT without any bridge.
template <typename AnyState, size_t Index, typename Action>
auto OnBridging(AnyState& state, const InputOf<Index>& input, std::optional<std::string_view> name,
                const Action& action) {
  return OnCounted(input, state.instances, name, [&](auto& instance) {
    using Outcome = decltype(Do(action, instance.bridging));
    if (instance.bridging.bridges.size() == 0) return Refused<Outcome>(ENOENT);
    return Do(action, instance.bridging);
  });
}

template <typename AnyState, size_t Index, typename Action>
auto OnBridging(AnyState& state, const InputOf<Index>& input, const Action& action) {
  return OnBridging(state, input, InstanceName(input), action);
}

// Does `action` where a command names an instance, or none for all of them.
template <size_t Index, typename Action>
Answer OnInstanceOrAll(const State& state, const InputOf<Index>& input, const Action& action) {
  if (input.Text("name").empty()) return action();
  return OnInstance(state, input, [&](const Instance&) { return action(); });
}

// An endpoint and its names, as they stand in a snapshot.
struct EndpointRow {
  std::string_view lif;
  std::string_view name;
  const BridgeEndpoint* endpoint;
};

// In the order of LIFs and endpoints.
void AppendEndpoints(const Instance& instance, std::vector<EndpointRow>& rows);

// Those of one instance or, without a name, of all in their order.
std::vector<EndpointRow> EndpointsOf(const Instances& instances, std::string_view only);

// A node of a cluster, as they stand in a snapshot.
struct NodeRow {
  std::string_view name;
  const MacAddress* mac;
  const BridgeCluster* cluster;
};

// In the order of clusters and nodes.
std::vector<NodeRow> NodesOf(const Table<std::string, BridgeCluster>& clusters);

}  // namespace vdrsim
