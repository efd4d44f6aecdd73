#include <string_view>

#include "bridge/bridge_cluster_node_record.h"
#include "bridge/bridge_cluster_record.h"
#include "datapath/answers.h"
#include "datapath/bridge_handlers.h"
#include "datapath/bridge_objects.h"
#include "datapath/caps.h"

namespace vdrsim {

namespace {

using vdrzax::kBridgeClusterNodeRecord;
using vdrzax::kBridgeClusterRecord;

size_t FreePlaces(const State& state) {
  return kMostClusterNodes - NodesOf(state.bridgeClusters).size();
}

template <typename AnyState, size_t Index, typename Action>
auto OnCluster(AnyState& state, const InputOf<Index>& input, const Action& action) {
  return OnNamed(state.bridgeClusters, input.ObjectName("name"), action);
}

// The area that is the kernel's own begins with the debug level.
void ShowCluster(RecordWriter<kBridgeClusterRecord> record, std::string_view name,
                 const BridgeCluster& cluster) {
  const auto level = static_cast<std::byte>(cluster.debugLevel);
  record.Bytes("nameArea", std::as_bytes(std::span(name)))
      .Number("word72", cluster.profileValue1)
      .Bytes("bytes76", std::span(&level, 1))
      .Number("half172", cluster.nodes.size())
      .Number("byte178", cluster.profile)
      .Number("word179", cluster.profileValue2);
}

void ShowNode(RecordWriter<kBridgeClusterNodeRecord> record, std::string_view name,
              const MacAddress& mac) {
  record.Bytes("nameArea", std::as_bytes(std::span(name)));
  ShowMac(record, "word64", "half68", mac);
}

}  // namespace

Answer Handle(const State& state, const Input<"GetBridgeClusters">& input) {
  if (input.Text("name").empty()) {
    return TableAnswer<kBridgeClusterRecord>(state.bridgeClusters, ShowCluster);
  }
  return OnCluster(state, input, [&](const BridgeCluster& cluster) {
    return RecordAnswer<kBridgeClusterRecord>(ShowCluster, input.Text("name"), cluster);
  });
}

int Handle(State& state, const Input<"BridgeClusterSet", 90>& input) {
  return SetNamed(state.bridgeClusters, input.ObjectName("name"), kMostBridgeClusters,
                  [](BridgeCluster&) {});
}

int Handle(State& state, const Input<"BridgeClusterSet", 91>& input) {
  return DeleteNamed(state.bridgeClusters, input.ObjectName("name"));
}

Answer Handle(const State& state, const Input<"GetBridgeClusterNodes">& input) {
  if (input.Text("name").empty()) {
    return SelectionAnswer<kBridgeClusterNodeRecord>(
        state.bridgeClusters, NodesOf,
        [](auto record, const NodeRow& row) { ShowNode(record, row.name, *row.mac); });
  }
  return OnCluster(state, input, [](const BridgeCluster& cluster) {
    return TableAnswer<kBridgeClusterNodeRecord>(cluster.nodes, ShowNode);
  });
}

int Handle(State& state, const Input<"BridgeClusterNodeSet", 93>& input) {
  const size_t places = FreePlaces(state);
  return OnCluster(state, input, [&](BridgeCluster& cluster) {
    return SetNamed(cluster.nodes, input.ObjectName("nodeName"), cluster.nodes.size() + places,
                    [&](MacAddress& mac) { mac = input.Mac("mac"); });
  });
}

int Handle(State& state, const Input<"BridgeClusterNodeSet", 94>& input) {
  return OnCluster(state, input, [&](BridgeCluster& cluster) {
    return DeleteNamed(cluster.nodes, input.ObjectName("nodeName"));
  });
}

int Handle(State& state, const Input<"FlushBridgeCluster", 103>&) {
  state.bridgeClusters.Clear();
  return 0;
}

int Handle(State& state, const Input<"FlushBridgeCluster", 104>& input) {
  return DeleteNamed(state.bridgeClusters, input.ObjectName("name"));
}

int Handle(State& state, const Input<"BridgeClusterBfdHAProfileSet">& input) {
  return OnCluster(state, input, [&](BridgeCluster& cluster) {
    cluster.profile = input.Byte("profile");
    cluster.profileValue1 = input.Word("value1");
    cluster.profileValue2 = input.Word("value2");
  });
}

// Without a name all that there are.
int Handle(State& state, const Input<"SetBridgeClusterDebug">& input) {
  const auto set = [&](BridgeCluster& cluster) { cluster.debugLevel = input.Byte("level"); };
  if (!input.Text("name").empty()) return OnCluster(state, input, set);
  state.bridgeClusters.ForEach(set);
  return 0;
}

}  // namespace vdrsim
