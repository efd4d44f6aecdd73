#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bridge/bridge_bfd_session_record.h"
#include "datapath/answers.h"
#include "datapath/bridge_handlers.h"
#include "datapath/bridge_layouts.h"
#include "datapath/bridge_objects.h"

namespace vdrsim {

namespace {

using vdrzax::kBridgeBfdSessionRecord;

// What the list has room for.
constexpr size_t kMostPortConnections = 131072 / kBfdPortConnection.size;

// Each node of each cluster watches each endpoint. The sessions are nowhere but in a reply, and
// there not all at once: at their cap they take 112 MB.
class BfdSessions {
 public:
  BfdSessions(const State& state, std::string_view only)
      : instances_(state.instances), clusters_(state.bridgeClusters), only_(only) {}

  uint32_t Prepare() {
    endpoints_ = EndpointsOf(instances_, only_);
    nodes_ = NodesOf(clusters_);
    return Count() * kBridgeBfdSessionRecord.size;
  }
  uint32_t Count() const { return static_cast<uint32_t>(endpoints_.size() * nodes_.size()); }

  size_t Write(std::span<std::byte> room) {
    constexpr size_t kSize = kBridgeBfdSessionRecord.size;
    if (room.size() < kSize || next_ == Count()) return 0;
    Show(RecordWriter<kBridgeBfdSessionRecord>(room.first(kSize)), next_ / nodes_.size(),
         nodes_[next_ % nodes_.size()]);
    ++next_;
    return kSize;
  }

 private:
  void Show(RecordWriter<kBridgeBfdSessionRecord> record, size_t number,
            const NodeRow& node) const {
    const BridgeEndpoint& endpoint = *endpoints_[number].endpoint;
    record.Number("half0", endpoint.tag)
        .Number("word2", endpoint.value1)
        .Number("half6", next_ % nodes_.size())
        .Number("word14", endpoint.value2)
        .Number("byte18", node.cluster->profile)
        .Number("word19", node.cluster->profileValue1)
        .Number("qword23", number)
        .Number("qword31", node.cluster->profileValue2);
    ShowMac(record, "word8", "half12", *node.mac);
  }

  Instances instances_;
  Table<std::string, BridgeCluster> clusters_;
  std::string only_;
  std::vector<EndpointRow> endpoints_{};
  std::vector<NodeRow> nodes_{};
  size_t next_ = 0;
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
  return SetNamed(state.bfdPortConnections, input.ObjectName("portName"), kMostPortConnections,
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
