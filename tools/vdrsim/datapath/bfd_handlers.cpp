#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
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
  static constexpr bool kWritesAll = true;

  BfdSessions(const State& state, std::string_view only)
      : instances_(state.instances), clusters_(state.bridgeClusters), only_(only) {}

  uint32_t Prepare() {
    endpoints_ = EndpointsOf(instances_, only_);
    for (const NodeRow& node : NodesOf(clusters_)) AddNode(node);
    return Count() * kSize;
  }
  uint32_t Count() const {
    return static_cast<uint32_t>(endpoints_.size() * (ofNodes_.size() / kSize));
  }

  // As many sessions of one endpoint as there is room for.
  size_t Write(std::span<std::byte> room) {
    if (next_ == endpoints_.size()) return 0;
    const size_t length = std::min(room.size() / kSize * kSize, ofNodes_.size() - at_);
    const Session ofEndpoint = OfEndpoint();
    for (size_t session = 0; session < length; session += kSize) {
      Join(&ofNodes_[at_ + session], ofEndpoint, &room[session]);
    }
    at_ += length;
    if (at_ == ofNodes_.size()) {
      at_ = 0;
      ++next_;
    }
    return length;
  }

 private:
  using Writer = RecordWriter<kBridgeBfdSessionRecord>;
  static constexpr size_t kSize = kBridgeBfdSessionRecord.size;
  using Session = std::array<std::byte, kSize>;

  Session OfEndpoint() const {
    const BridgeEndpoint& endpoint = *endpoints_[next_].endpoint;
    Session session{};
    Writer(session)
        .Number("half0", endpoint.tag)
        .Number("word2", endpoint.value1)
        .Number("word14", endpoint.value2)
        .Number("qword23", next_);
    return session;
  }

  // Each byte is of the one or of the other. Sixteen go at once, the last again with those before:
  // there are millions of sessions, and field by field each would take twice as long.
  static void Join(const std::byte* ofNode, const Session& ofEndpoint, std::byte* session) {
    using Lane = uint64_t __attribute__((vector_size(16)));
#pragma GCC unroll 4
    for (size_t done = 0; done < kSize; done += sizeof(Lane)) {
      const size_t place = std::min(done, kSize - sizeof(Lane));
      Lane left;
      Lane right;
      std::memcpy(&left, ofNode + place, sizeof left);
      std::memcpy(&right, &ofEndpoint[place], sizeof right);
      left |= right;
      std::memcpy(session + place, &left, sizeof left);
    }
  }

  void AddNode(const NodeRow& node) {
    const size_t begin = ofNodes_.size();
    ofNodes_.resize(begin + kSize);
    const Writer record(std::span<std::byte>(ofNodes_).subspan(begin));
    record.Number("half6", begin / kSize)
        .Number("byte18", node.cluster->profile)
        .Number("word19", node.cluster->profileValue1)
        .Number("qword31", node.cluster->profileValue2);
    ShowMac(record, "word8", "half12", *node.mac);
  }

  Instances instances_;
  Table<std::string, BridgeCluster> clusters_;
  std::string only_;
  std::vector<EndpointRow> endpoints_{};
  std::vector<std::byte> ofNodes_{};  // the sessions of an endpoint, without what is its own
  size_t next_ = 0;                   // of the endpoints
  size_t at_ = 0;                     // in ofNodes_
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
