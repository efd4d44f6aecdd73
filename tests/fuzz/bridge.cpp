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

const getters::OtherGetter& kAll = getters::Other("VDRZAX_GetBeAll");

// The caller brings buffer and capacity; the length is not compared with it.
void AllEndpoints(const Case& input) {
  constexpr uint32_t kBefore = 0x5C5C5C5C;
  const uint32_t capacity = 1 + input.function;
  const device::Reply reply = input.Answer(capacity);
  const std::unique_ptr<uint8_t[]> buffer(new uint8_t[capacity]);
  uint32_t count = kBefore;
  const Outcome outcome =
      Call(input, reply, [&] { return VDRZAX_GetBeAll(buffer.get(), capacity, &count); });
  RequireSent(input, kAll.code, capacity);
  if (input.CommandFails()) {
    RequireFailure(outcome, input.CommandError());
    return Require(count == kBefore, "a failure leaves the count");
  }
  RequireSuccess(outcome);
  Require(count == reply.length / kAll.size, "the count is the length in records");
  RequireWritten(buffer.get(), capacity, reply);
}

// A list of all, whatever their name.
getters::ListGetter Nameless(const char* name, int (*get)(const char* name, RecordList** out),
                             int (*fetch)(const char* name, RecordList* list)) {
  getters::ListGetter getter = getters::List(name);
  getter.call = [get](RecordList** out) { return get(nullptr, out); };
  getter.fetch = [fetch](RecordList* list) { return fetch(nullptr, list); };
  getter.block = wire::Block();
  return getter;
}

}  // namespace

const std::vector<Subject>& Subjects() {
  static const auto subjects = SubjectsOf(
      getters::Bridge(),
      {{"VDRZAX_GetBridgeInstance", Expected<kBridgeInstanceRecord>},
       {"VDRZAX_GetBridgeInstances", Expected<kBridgeInstanceRecord>},
       {"VDRZAX_GetBridgeNetworks", Expected<kBridgeNetworkRecord>},
       {"VDRZAX_GetBridgePorts", Expected<kBridgePortRecord>},
       {"VDRZAX_GetBridgeFdbEntries", Expected<kBridgeFdbRecord>},
       {"VDRZAX_GetBridgeClusters", Expected<kBridgeClusterRecord>},
       {"VDRZAX_GetBridgeClusterNodes", Expected<kBridgeClusterNodeRecord>},
       {"VDRZAX_GetBridgeEndpoints", Expected<kBridgeEndpointRecord>},
       {"VDRZAX_GetBridgeBFDSessions", Expected<kBridgeBfdSessionRecord>}},
      {{kAll.name, AllEndpoints}},
      {Nameless("VDRZAX_GetBridgeClusters", VDRZAX_GetBridgeClusters, VDRZAXGetBridgeClusters),
       Nameless("VDRZAX_GetBridgeClusterNodes", VDRZAX_GetBridgeClusterNodes,
                VDRZAXGetBridgeClusterNodes),
       Nameless("VDRZAX_GetBridgeEndpoints", VDRZAX_GetBridgeEndpoints, VDRZAXGetBridgeEndpoints),
       Nameless("VDRZAX_GetBridgeBFDSessions", VDRZAX_GetBridgeBFDSessions,
                VDRZAXGetBridgeBFDSessions)});
  return subjects;
}
