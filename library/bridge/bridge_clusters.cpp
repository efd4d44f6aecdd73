#include "bridge/bridge_cluster_node_record.h"
#include "bridge/bridge_cluster_record.h"
#include "channel/getters.h"

namespace {

using namespace vdrzax;

constexpr ListKind<BridgeClusterRecord, kBridgeClusterRecord> kBridgeClusters{
    .cap = 10, .release = VDRZAX_ReleaseBridgeClusters};

constexpr ListKind<BridgeClusterNodeRecord, kBridgeClusterNodeRecord> kBridgeClusterNodes{
    .cap = 100, .release = VDRZAX_ReleaseBridgeClusterNodes};

constexpr TextSlot<256> kNodeName;

}  // namespace

int VDRZAX_GetBridgeClusters(const char* name, RecordList** out) {
  return GetList(out, [&](RecordList* list) { return VDRZAXGetBridgeClusters(name, list); });
}

int VDRZAXGetBridgeClusters(const char* name, RecordList* list) {
  return FetchList<kBridgeClusters>(CommandCode::GetBridgeClusters, list, [&](Request& request) {
    request.OptionalText(kInstanceName, name);
  });
}

int VDRZAX_BridgeClusterSet(const char* name, uint8_t create) {
  return Request{}
      .Text(kInstanceName, name)
      .Send(create != 0 ? CommandCode::AddBridgeCluster : CommandCode::DelBridgeCluster);
}

int VDRZAX_GetBridgeClusterNodes(const char* name, RecordList** out) {
  return GetList(out, [&](RecordList* list) { return VDRZAXGetBridgeClusterNodes(name, list); });
}

int VDRZAXGetBridgeClusterNodes(const char* name, RecordList* list) {
  return FetchList<kBridgeClusterNodes>(
      CommandCode::GetBridgeClusterNodes, list,
      [&](Request& request) { request.OptionalText(kInstanceName, name); });
}

int VDRZAX_BridgeClusterNodeSet(const char* name, const char* nodeName, const MacValue* mac,
                                uint8_t add) {
  Request request;
  request.Text(kInstanceName, name).Text(kNodeName, nodeName);
  if (add == 0) return request.Send(CommandCode::DelBridgeClusterNode);
  return request.Mac<320>(mac).Send(CommandCode::AddBridgeClusterNode);
}

int VDRZAX_FlushBridgeCluster(const char* name, uint8_t all) {
  return Request{}
      .OptionalText(kInstanceName, name)
      .Send(all != 0 ? CommandCode::FlushAllBridgeClusters : CommandCode::FlushBridgeCluster);
}

int VDRZAX_SetBridgeClusterDebug(const char* name, uint8_t level) {
  return Request{}
      .OptionalText(kInstanceName, name)
      .Put<256>(level)
      .Send(CommandCode::SetBridgeClusterDebug);
}

int VDRZAX_BridgeClusterBfdHAProfileSet(const char* name, uint8_t profile, uint32_t value1,
                                        uint32_t value2) {
  return Request{}
      .Text(kInstanceName, name)
      .Put<256>(profile)
      .Put<260>(value1)
      .Put<264>(value2)
      .Send(CommandCode::BridgeClusterBfdHAProfileSet);
}

void VDRZAX_ReleaseBridgeClusters(RecordList* list) { ReleaseList(list); }

void VDRZAX_ReleaseBridgeClusterNodes(RecordList* list) { ReleaseList(list); }
