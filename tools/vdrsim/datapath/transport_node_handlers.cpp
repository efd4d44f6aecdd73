#include <algorithm>
#include <cerrno>
#include <utility>

#include "datapath/answers.h"
#include "datapath/bridge_handlers.h"
#include "datapath/bridge_layouts.h"

namespace vdrsim {

namespace {

void ShowTransportNode(RecordWriter<kTransportNode> record, const TransportNode& node,
                       uint32_t selector) {
  record.Text("name1", node.name1)
      .Text("name2", node.name2)
      .Text("name3", node.name3)
      .Number("value", node.value)
      .Bytes("bytes", node.bytes)
      .Number("selector", selector);
}

}  // namespace

int Handle(State& state, const Input<"BridgeLocalTransportNodeSet", 100>& input) {
  const auto name = input.ObjectName("name1");
  if (!name) return EINVAL;
  TransportNode node{.name1 = std::string(*name),
                     .name2 = std::string(input.Text("name2")),
                     .name3 = std::string(input.Text("name3")),
                     .value = input.Word("value")};
  std::ranges::copy(input.Bytes("bytes"), node.bytes.begin());
  state.transportNode = std::move(node);
  return 0;
}

// The first name tells whether it is the one that is set.
int Handle(State& state, const Input<"BridgeLocalTransportNodeSet", 101>& input) {
  const auto name = input.ObjectName("name1");
  if (!name) return EINVAL;
  if (!state.transportNode || state.transportNode->name1 != *name) return ENOENT;
  state.transportNode.reset();
  return 0;
}

// There is one: the selector is handed back, no more.
Answer Handle(const State& state, const Input<"BridgeGetLocalTransportNode">& input) {
  if (!state.transportNode) return {.error = ENOENT};
  return RecordAnswer<kTransportNode>(ShowTransportNode, *state.transportNode,
                                      input.Word("selector"));
}

}  // namespace vdrsim
