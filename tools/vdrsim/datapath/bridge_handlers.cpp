#include "datapath/bridge_handlers.h"

#include <string_view>
#include <vector>

#include "bridge/bridge_instance_record.h"
#include "datapath/answers.h"
#include "datapath/bridge_objects.h"
#include "datapath/caps.h"

namespace vdrsim {

namespace {

using vdrzax::kBridgeInstanceRecord;

size_t FreePlaces(const State& state) {
  size_t count = 0;
  for (const auto& [name, instance] : state.instances) count += instance.bridging.bridges.size();
  return kMostBridges - count;
}

// Does `action` on the bridge of that value.
template <size_t Index, typename Action>
int OnBridge(State& state, const InputOf<Index>& input, uint32_t value, const Action& action) {
  return OnBridging(state, input, [&](Bridging& bridging) {
    Bridge* bridge = bridging.bridges.Find(value);
    if (!bridge) return ENOENT;
    action(*bridge);
    CountOn(*bridge, InputOf<Index>::kRequest.effect, 0);
    return 0;
  });
}

// A bridge and what it belongs to, as they stand in a snapshot.
struct BridgeRow {
  std::string_view instanceName;
  const Bridging* bridging;
  uint32_t value;
  const Bridge* bridge;
};

std::vector<BridgeRow> BridgesOf(const Instances& instances) {
  std::vector<BridgeRow> rows;
  for (const auto& [name, instance] : instances) {
    for (const auto& [value, bridge] : instance.bridging.bridges) {
      rows.push_back({name, &instance.bridging, value, &bridge});
    }
  }
  return rows;
}

void ShowBridge(RecordWriter<kBridgeInstanceRecord> record, const BridgeRow& row) {
  const Counts& counts = row.bridge->counters.counts();
  record.Number("word8", row.value)
      .Text("name", row.instanceName)
      .Number("word76", row.bridge->isEnabled)
      .Number("word80", row.bridging->replicationMode)
      .Number("word305", row.bridging->haAdminState)
      .Number("qwords313", 0, counts.sets)
      .Number("qwords313", 1, counts.lookups);
}

}  // namespace

int Handle(State& state, const Input<"BridgeAdd">& input) {
  const size_t places = FreePlaces(state);
  return OnInstance(state, input, [&](Instance& instance) {
    auto& bridges = instance.bridging.bridges;
    return bridges.Set(input.Word("value"), bridges.size() + places, [](Bridge& bridge) {
      CountOn(bridge, requests::Sets, 0);
      return 0;
    });
  });
}

int Handle(State& state, const Input<"BridgeDel">& input) {
  return OnBridging(state, input, [&](Bridging& bridging) {
    const int error = bridging.bridges.Delete(input.Word("value"));
    if (bridging.bridges.size() == 0) bridging = {};
    return error;
  });
}

int Handle(State& state, const Input<"BridgeEnable">& input) {
  return OnBridge(state, input, input.Byte("value"),
                  [](Bridge& bridge) { bridge.isEnabled = true; });
}

int Handle(State& state, const Input<"BridgeDisable">& input) {
  return OnBridge(state, input, input.Byte("value"),
                  [](Bridge& bridge) { bridge.isEnabled = false; });
}

int Handle(State& state, const Input<"SetBridgeRepMode">& input) {
  return OnBridging(state, input,
                    [&](Bridging& bridging) { bridging.replicationMode = input.Word("mode"); });
}

int Handle(State& state, const Input<"BridgeSetHAAdminState">& input) {
  return OnBridging(state, input,
                    [&](Bridging& bridging) { bridging.haAdminState = input.Word("state"); });
}

Answer Handle(const State& state, const Input<"GetBridgeInstances">&) {
  return SelectionAnswer<kBridgeInstanceRecord>(state.instances, BridgesOf, ShowBridge);
}

// The instance alone is named: the first of its bridges is meant.
Answer Handle(const State& state, const Input<"GetBridgeInstance">& input) {
  return OnBridging(state, input, [&](const Bridging& bridging) {
    const auto& [value, bridge] = *bridging.bridges.begin();
    const BridgeRow row{input.Text("instanceName"), &bridging, value, &bridge};
    Answer answer = RecordAnswer<kBridgeInstanceRecord>(ShowBridge, row);
    CountOn(bridge, requests::Reads, 0);
    return answer;
  });
}

}  // namespace vdrsim
