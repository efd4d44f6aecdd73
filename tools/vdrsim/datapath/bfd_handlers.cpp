#include <array>
#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bridge/bridge_bfd_session_record.h"
#include "datapath/answers.h"
#include "datapath/bridge_handlers.h"
#include "datapath/bridge_layouts.h"
#include "datapath/bridge_objects.h"
#include "datapath/caps.h"

namespace vdrsim {

namespace {

using vdrzax::kBridgeBfdSessionRecord;

// What the list has room for.
static_assert(kMostBfdPortConnections == 131072 / kBfdPortConnection.size);

// Each node of each cluster watches each endpoint. The sessions are nowhere but in a reply, and
// there not all at once: at their cap they take 112 MB.
class BfdSessions {
 public:
  BfdSessions(const State& state, std::string_view only)
      : instances_(state.instances), clusters_(state.bridgeClusters), only_(only) {}

  uint32_t Prepare() {
    endpoints_ = EndpointsOf(instances_, only_);
    for (const NodeRow& node : NodesOf(clusters_)) ShowNode(node);
    return Count() * kSize;
  }
  uint32_t Count() const { return static_cast<uint32_t>(endpoints_.size() * nodes_.size()); }

  size_t Write(std::span<std::byte> room) {
    if (room.size() < kSize || endpoint_ == endpoints_.size() || nodes_.empty()) return 0;
    std::memcpy(room.data(), nodes_[node_].data(), kSize);
    ShowEndpoint(Writer(room.first(kSize)), *endpoints_[endpoint_].endpoint);
    if (++node_ == nodes_.size()) {
      node_ = 0;
      ++endpoint_;
    }
    return kSize;
  }

 private:
  using Writer = RecordWriter<kBridgeBfdSessionRecord>;
  static constexpr size_t kSize = kBridgeBfdSessionRecord.size;

  void ShowNode(const NodeRow& node) {
    const size_t number = nodes_.size();
    const Writer record(nodes_.emplace_back());
    record.Number("half6", number)
        .Number("byte18", node.cluster->profile)
        .Number("word19", node.cluster->profileValue1)
        .Number("qword31", node.cluster->profileValue2);
    ShowMac(record, "word8", "half12", *node.mac);
  }

  void ShowEndpoint(Writer record, const BridgeEndpoint& endpoint) const {
    record.Number("half0", endpoint.tag)
        .Number("word2", endpoint.value1)
        .Number("word14", endpoint.value2)
        .Number("qword23", endpoint_);
  }

  Instances instances_;
  Table<std::string, BridgeCluster> clusters_;
  std::string only_;
  std::vector<EndpointRow> endpoints_{};
  std::vector<std::array<std::byte, kSize>> nodes_{};  // the sessions of each, without an endpoint
  size_t endpoint_ = 0;
  size_t node_ = 0;
};

void ShowPortConnection(RecordWriter<kBfdPortConnection> record, std::string_view name,
                        const BfdPortConnection& connection) {
  record.Text("portName", name).Text("name2", connection.name2).Mac("mac", connection.mac);
}

}  // namespace

Answer Handle(const State& state, const Input<"GetBridgeBFDSessions">& input) {
  return OnInstanceOrAll(state, input,
                         [&] { return StreamAnswer(BfdSessions(state, input.Text("name"))); });
}

int Handle(State& state, const Input<"PlumbBFDPortConnection">& input) {
  return SetNamed(state.bfdPortConnections, input.ObjectName("portName"), kMostBfdPortConnections,
                  [&](BfdPortConnection& connection) {
                    connection.name2 = input.Text("name2");
                    connection.mac = input.Mac("mac");
                  });
}

int Handle(State& state, const Input<"UnPlumbBFDPortConnection">& input) {
  return DeleteNamed(state.bfdPortConnections, input.ObjectName("portName"));
}

Answer Handle(const State& state, const Input<"GetBFDPortConnections">&) {
  return TableAnswer<kBfdPortConnection>(state.bfdPortConnections, ShowPortConnection);
}

}  // namespace vdrsim
