#include <vdrzax/bridge.h>

#include <memory>

#include "bridge/bridge_bfd_session_record.h"
#include "bridge/bridge_cluster_node_record.h"
#include "bridge/bridge_cluster_record.h"
#include "bridge/bridge_endpoint_record.h"
#include "bridge/bridge_fdb_record.h"
#include "bridge/bridge_instance_record.h"
#include "bridge/bridge_network_record.h"
#include "bridge/bridge_port_record.h"
#include "getters.h"
#include "require.h"

namespace {

using namespace vdrzax;

constexpr ListShape kInstances{.code = 61,
                               .size = 393,
                               .cap = 4096,
                               .expected = Expected<kBridgeInstanceRecord>,
                               .dropsHeader = true};
constexpr ListShape kNetworks{.code = 63,
                              .size = 133,
                              .cap = 32768,
                              .expected = Expected<kBridgeNetworkRecord>,
                              .dropsHeader = true};
constexpr ListShape kPorts{.code = 64,
                           .size = 146,
                           .cap = 32768,
                           .expected = Expected<kBridgePortRecord>,
                           .dropsHeader = true};
constexpr ListShape kFdbEntries{.code = 65,
                                .size = 20,
                                .cap = 10240,
                                .expected = Expected<kBridgeFdbRecord>,
                                .dropsHeader = true};
constexpr ListShape kClusters{
    .code = 89, .size = 183, .cap = 10, .expected = Expected<kBridgeClusterRecord>};
constexpr ListShape kClusterNodes{
    .code = 92, .size = 71, .cap = 100, .expected = Expected<kBridgeClusterNodeRecord>};
constexpr ListShape kEndpoints{
    .code = 95, .size = 235, .cap = 28672, .expected = Expected<kBridgeEndpointRecord>};
constexpr ListShape kBfdSessions{
    .code = 96, .size = 39, .cap = 2867200, .expected = Expected<kBridgeBfdSessionRecord>};

// The caller brings buffer and capacity; the length is not compared with it.
void AllEndpoints(const Case& input) {
  constexpr uint32_t kBefore = 0x5C5C5C5C;
  const uint32_t capacity = 1 + input.function;
  const device::Reply reply = input.Answer(capacity);
  const std::unique_ptr<uint8_t[]> buffer(new uint8_t[capacity]);
  uint32_t count = kBefore;
  const Outcome outcome =
      Call(input, reply, [&] { return VDRZAX_GetBeAll(buffer.get(), capacity, &count); });
  RequireSent(input, 52, capacity);
  if (input.CommandFails()) {
    RequireFailure(outcome, input.CommandError());
    return Require(count == kBefore, "a failure leaves the count");
  }
  RequireSuccess(outcome);
  Require(count == reply.length / 235, "the count is the length in records");
  RequireWritten(buffer.get(), capacity, reply);
}

}  // namespace

std::span<const Subject> Subjects() {
  static const Subject subjects[] = {
      RecordGetter<BridgeInstanceRecord>(
          {.code = 62, .size = 393, .expected = Expected<kBridgeInstanceRecord>},
          [](BridgeInstanceRecord** out) { return VDRZAX_GetBridgeInstance("edge-1", out); },
          VDRZAX_ReleaseBridgeInstance),
      ListGetter(kInstances, VDRZAX_GetBridgeInstances, VDRZAX_ReleaseBridgeInstances),
      ListFetch(kInstances, VDRZAXGetBridgeInstances, VDRZAX_ReleaseBridgeInstances),
      ListGetter(
          kNetworks,
          [](RecordList** out) { return VDRZAX_GetBridgeNetworks("edge-1", "bridge-1", out); },
          VDRZAX_ReleaseBridgeNetworks),
      ListFetch(
          kNetworks,
          [](RecordList* list) { return VDRZAXGetBridgeNetworks("edge-1", "bridge-1", list); },
          VDRZAX_ReleaseBridgeNetworks),
      ListGetter(
          kPorts,
          [](RecordList** out) { return VDRZAX_GetBridgePorts("edge-1", "bridge-1", 7, 1, out); },
          VDRZAX_ReleaseBridgePorts),
      ListFetch(
          kPorts,
          [](RecordList* list) { return VDRZAXGetBridgePorts("edge-1", "bridge-1", 7, 1, list); },
          VDRZAX_ReleaseBridgePorts),
      ListGetter(
          kFdbEntries,
          [](RecordList** out) { return VDRZAX_GetBridgeFdbEntries("edge-1", 7, 1, out); },
          VDRZAX_ReleaseBridgeFdbEntries),
      ListFetch(
          kFdbEntries,
          [](RecordList* list) { return VDRZAXGetBridgeFdbEntries("edge-1", 7, 1, list); },
          VDRZAX_ReleaseBridgeFdbEntries),
      ListGetter(
          kClusters, [](RecordList** out) { return VDRZAX_GetBridgeClusters("edge-1", out); },
          VDRZAX_ReleaseBridgeClusters),
      ListFetch(
          kClusters, [](RecordList* list) { return VDRZAXGetBridgeClusters(nullptr, list); },
          VDRZAX_ReleaseBridgeClusters),
      ListGetter(
          kClusterNodes,
          [](RecordList** out) { return VDRZAX_GetBridgeClusterNodes("edge-1", out); },
          VDRZAX_ReleaseBridgeClusterNodes),
      ListFetch(
          kClusterNodes,
          [](RecordList* list) { return VDRZAXGetBridgeClusterNodes(nullptr, list); },
          VDRZAX_ReleaseBridgeClusterNodes),
      ListGetter(
          kEndpoints, [](RecordList** out) { return VDRZAX_GetBridgeEndpoints("edge-1", out); },
          VDRZAX_ReleaseBridgeEndpoints),
      ListFetch(
          kEndpoints, [](RecordList* list) { return VDRZAXGetBridgeEndpoints(nullptr, list); },
          VDRZAX_ReleaseBridgeEndpoints),
      ListGetter(
          kBfdSessions, [](RecordList** out) { return VDRZAX_GetBridgeBFDSessions("edge-1", out); },
          VDRZAX_ReleaseBridgeBFDSessions),
      ListFetch(
          kBfdSessions, [](RecordList* list) { return VDRZAXGetBridgeBFDSessions(nullptr, list); },
          VDRZAX_ReleaseBridgeBFDSessions),
      AllEndpoints,
      RawGetter(50, 146, [](void* buffer) { return VDRZAX_GetBeStats("lif-1", buffer); }),
      RawGetter(51, 229, [](void* buffer) { return VDRZAX_GetBeStatus("lif-1", buffer); }),
      RawGetter(99, 131072, VDRZAX_GetBFDPortConnections),
      RawGetter(102, 2048,
                [](void* buffer) { return VDRZAX_BridgeGetLocalTransportNode(buffer, 1); }),
  };
  return subjects;
}
