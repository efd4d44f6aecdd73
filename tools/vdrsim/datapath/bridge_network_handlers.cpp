#include <algorithm>
#include <array>
#include <compare>
#include <cstring>
#include <map>
#include <string_view>
#include <vector>

#include "bridge/bridge_network_record.h"
#include "bridge/bridge_port_record.h"
#include "datapath/answers.h"
#include "datapath/bridge_handlers.h"
#include "datapath/bridge_objects.h"

// Networks and ports are made of what was set: each bridge has a port of its own in its network 0,
// and each endpoint is a port of the network of its tag. So there are never more of either than
// there can be bridges and endpoints, which is what the lists have room for.
namespace vdrsim {

namespace {

using vdrzax::kBridgeNetworkRecord;
using vdrzax::kBridgePortRecord;

constexpr uint16_t kOwnNetwork = 0;

// Any bridge of the instance.
constexpr uint32_t kAnyBridge = 0;

struct NetworkName {
  uint32_t bridge;
  uint16_t tag;

  auto operator<=>(const NetworkName&) const = default;
};

struct NetworkRow {
  NetworkName name;
  size_t ports;
  const Bridge* bridge;
};

std::vector<EndpointRow> EndpointsOf(const Instance& instance) {
  std::vector<EndpointRow> rows;
  AppendEndpoints(instance, rows);
  return rows;
}

std::vector<NetworkRow> NetworksOf(const Instance& instance) {
  const auto& bridges = instance.bridging.bridges;
  std::map<NetworkName, size_t> ports;
  for (const auto& [value, bridge] : bridges) ports[{value, kOwnNetwork}] = 1;
  for (const EndpointRow& row : EndpointsOf(instance)) {
    const NetworkName name{row.endpoint->value1, row.endpoint->tag};
    if (bridges.Find(name.bridge)) ++ports[name];
  }
  std::vector<NetworkRow> rows;
  rows.reserve(ports.size());
  for (const auto& [name, count] : ports) {
    rows.push_back({name, count, bridges.Find(name.bridge)});
  }
  return rows;
}

// Without an endpoint it is the bridge's own.
struct PortRow {
  uint32_t bridge;
  EndpointRow end;
};

std::vector<PortRow> PortsOf(const Instance& instance, uint32_t network, uint32_t bridge) {
  const auto isMeant = [&](uint32_t value, uint16_t tag) {
    return tag == network && (bridge == kAnyBridge || bridge == value) &&
           instance.bridging.bridges.Find(value);
  };
  std::vector<PortRow> rows;
  for (const auto& [value, own] : instance.bridging.bridges) {
    if (isMeant(value, kOwnNetwork)) rows.push_back({value, {}});
  }
  for (const EndpointRow& row : EndpointsOf(instance)) {
    const uint32_t value = row.endpoint->value1;
    if (isMeant(value, row.endpoint->tag)) rows.push_back({value, row});
  }
  std::ranges::stable_sort(rows, {}, &PortRow::bridge);
  return rows;
}

using PortWriter = RecordWriter<kBridgePortRecord>;

// The record has no place for texts, but numbers that are 64 bytes together.
void ShowName(PortWriter record, size_t first, std::string_view name) {
  std::array<uint64_t, 8> words{};
  std::memcpy(words.data(), name.data(), name.size());
  for (size_t word = 0; word < words.size(); ++word) {
    record.Number("qwords18", first + word, words[word]);
  }
}

void ShowPort(PortWriter record, const PortRow& row) {
  record.Number("word8", row.bridge);
  if (!row.end.endpoint) return;
  record.Number("qword0", 1)
      .Number("half12", row.end.endpoint->tag)
      .Number("word14", row.end.endpoint->value2);
  ShowName(record, 0, row.end.lif);
  ShowName(record, 8, row.end.name);
}

}  // namespace

Answer Handle(const State& state, const Input<"GetBridgeNetworks">& input) {
  const auto name = input.ObjectName("name2");
  return OnBridging(state, input, name, [&](const Bridging& bridging) {
    return SelectionAnswer<kBridgeNetworkRecord>(
        *state.instances.Find(*name), NetworksOf,
        [mode = bridging.replicationMode, ha = bridging.haAdminState](auto record,
                                                                      const NetworkRow& row) {
          record.Number("qword0", row.ports)
              .Number("word8", row.name.bridge)
              .Number("half12", row.name.tag)
              .Number("word14", mode)
              .Number("word20", ha)
              .Number("byte28", row.bridge->isEnabled);
        });
  });
}

Answer Handle(const State& state, const Input<"GetBridgePorts">& input) {
  const auto name = input.ObjectName("name2");
  const uint32_t network = input.Word("network");
  const uint32_t value = input.Word("value");
  return OnBridging(state, input, name, [&](const Bridging& bridging) -> Answer {
    if (value != kAnyBridge && !bridging.bridges.Find(value)) return {.error = ENOENT};
    return SelectionAnswer<kBridgePortRecord>(
        *state.instances.Find(*name),
        [=](const Instance& instance) { return PortsOf(instance, network, value); }, ShowPort);
  });
}

}  // namespace vdrsim
