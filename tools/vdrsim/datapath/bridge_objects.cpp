#include "datapath/bridge_objects.h"

namespace vdrsim {

void AppendEndpoints(const Instance& instance, std::vector<EndpointRow>& rows) {
  for (const auto& [lifName, lif] : instance.bridgeLifs) {
    for (const auto& [name, endpoint] : lif.endpoints) rows.push_back({lifName, name, &endpoint});
  }
}

std::vector<EndpointRow> EndpointsOf(const Instances& instances, std::string_view only) {
  std::vector<EndpointRow> rows;
  for (const auto& [name, instance] : instances) {
    if (only.empty() || only == name) AppendEndpoints(instance, rows);
  }
  return rows;
}

std::vector<NodeRow> NodesOf(const Table<std::string, BridgeCluster>& clusters) {
  std::vector<NodeRow> rows;
  for (const auto& [owner, cluster] : clusters) {
    for (const auto& [name, mac] : cluster.nodes) rows.push_back({name, &mac, &cluster});
  }
  return rows;
}

}  // namespace vdrsim
