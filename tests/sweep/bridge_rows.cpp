#include "sweep/sweep.h"

namespace sweep {

namespace {

constexpr MacValue kMac{{2, 0, 0, 0, 0, 1}};
constexpr uint8_t kNodeBytes[64] = {1, 2, 3};

}  // namespace

// The getters of instances, networks, ports and forwarding entries lose their header when the
// command fails; the fetches beside them leave it to the caller there. The lists of clusters,
// nodes, endpoints and sessions free it in both.
Rows BridgeRows() {
  return {
      Command("VDRZAX_SetBridgeLif",
              [] { return VDRZAX_SetBridgeLif("uplink", "second", 1, 2, 3, "edge-1", 1); }),
      Command("VDRZAX_SetBridgeLif",
              [] { return VDRZAX_SetBridgeLif("uplink", "second", 1, 2, 3, "edge-1", 0); }),
      Command("VDRZAX_AddBridgeEndpoint",
              [] {
                return VDRZAX_AddBridgeEndpoint("uplink", "second", "endpoint", 1, 2, "fourth", 3,
                                                4, "fifth", 5);
              }),
      Command("VDRZAX_DelBridgeEndpoint",
              [] { return VDRZAX_DelBridgeEndpoint("uplink", "endpoint"); }),
      Command("VDRZAX_FlushBridgeEndpoint", [] { return VDRZAX_FlushBridgeEndpoint(1); }),
      Command("VDRZAX_FlushBridgeEndpoint", [] { return VDRZAX_FlushBridgeEndpoint(0); }),
      Command("VDRZAX_SetBridgeRepMode", [] { return VDRZAX_SetBridgeRepMode("edge-1", 2); }),

      Record<BridgeInstanceRecord>(
          "VDRZAX_GetBridgeInstance",
          [](BridgeInstanceRecord** out) { return VDRZAX_GetBridgeInstance("edge-1", out); },
          VDRZAX_ReleaseBridgeInstance, 393),
      List("VDRZAX_GetBridgeInstances", VDRZAX_GetBridgeInstances, VDRZAX_ReleaseBridgeInstances,
           393, 4096)
          .KeepingOnFailedCommand(16),
      List(
          "VDRZAX_GetBridgeNetworks",
          [](RecordList** out) { return VDRZAX_GetBridgeNetworks("edge-1", "net", out); },
          VDRZAX_ReleaseBridgeNetworks, 133, 32768)
          .KeepingOnFailedCommand(16),
      List(
          "VDRZAX_GetBridgePorts",
          [](RecordList** out) { return VDRZAX_GetBridgePorts("edge-1", "net", 3, 4, out); },
          VDRZAX_ReleaseBridgePorts, 146, 32768)
          .KeepingOnFailedCommand(16),
      Fetch("VDRZAXGetBridgeInstances", VDRZAXGetBridgeInstances, VDRZAX_ReleaseBridgeInstances,
            393, 4096)
          .KeepingOnFailedCommand(16),
      Fetch(
          "VDRZAXGetBridgeNetworks",
          [](RecordList* list) { return VDRZAXGetBridgeNetworks("edge-1", "net", list); },
          VDRZAX_ReleaseBridgeNetworks, 133, 32768)
          .KeepingOnFailedCommand(16),
      Fetch(
          "VDRZAXGetBridgePorts",
          [](RecordList* list) { return VDRZAXGetBridgePorts("edge-1", "net", 3, 4, list); },
          VDRZAX_ReleaseBridgePorts, 146, 32768)
          .KeepingOnFailedCommand(16),
      Raw(
          "VDRZAX_GetBeStats", [](void* buffer) { return VDRZAX_GetBeStats("uplink", buffer); },
          146),
      Raw(
          "VDRZAX_GetBeStatus", [](void* buffer) { return VDRZAX_GetBeStatus("uplink", buffer); },
          229),
      Raw(
          "VDRZAX_GetBeAll",
          [](void* buffer) {
            uint32_t count;
            return VDRZAX_GetBeAll(buffer, 2350, &count);
          },
          2350),
      Release("VDRZAX_ReleaseBridgeInstance", VDRZAX_ReleaseBridgeInstance, 393),
      Release("VDRZAX_ReleaseBridgeNetwork", VDRZAX_ReleaseBridgeNetwork, 133),
      Release("VDRZAX_ReleaseBridgeInstances", VDRZAX_ReleaseBridgeInstances, 16),
      Release("VDRZAX_ReleaseBridgeNetworks", VDRZAX_ReleaseBridgeNetworks, 16),
      Release("VDRZAX_ReleaseBridgePorts", VDRZAX_ReleaseBridgePorts, 16),

      List(
          "VDRZAX_GetBridgeFdbEntries",
          [](RecordList** out) { return VDRZAX_GetBridgeFdbEntries("edge-1", 2, 3, out); },
          VDRZAX_ReleaseBridgeFdbEntries, 20, 10240)
          .KeepingOnFailedCommand(16),
      Fetch(
          "VDRZAXGetBridgeFdbEntries",
          [](RecordList* list) { return VDRZAXGetBridgeFdbEntries("edge-1", 2, 3, list); },
          VDRZAX_ReleaseBridgeFdbEntries, 20, 10240)
          .KeepingOnFailedCommand(16),
      Command("VDRZAX_BridgeSetFdbEntry",
              [] { return VDRZAX_BridgeSetFdbEntry("edge-1", "02:00:00:00:00:01", 1, 2, 3, 1); }),
      Command("VDRZAX_BridgeClearFdbTable",
              [] { return VDRZAX_BridgeClearFdbTable("edge-1", 1, 2); }),
      Release("VDRZAX_ReleaseBridgeFdbEntries", VDRZAX_ReleaseBridgeFdbEntries, 16),

      Command("VDRZAX_BridgeSetConfig", [] { return VDRZAX_BridgeSetConfig("edge-1", 68, 1); }),
      Command("VDRZAX_BridgeAdd", [] { return VDRZAX_BridgeAdd("edge-1", 1); }),
      Command("VDRZAX_BridgeDel", [] { return VDRZAX_BridgeDel("edge-1", 1); }),
      Command("VDRZAX_BridgeSetHAAdminState",
              [] { return VDRZAX_BridgeSetHAAdminState("edge-1", 1); }),
      Command("VDRZAX_BridgeEnable", [] { return VDRZAX_BridgeEnable("edge-1", 1); }),
      Command("VDRZAX_BridgeDisable", [] { return VDRZAX_BridgeDisable("edge-1", 1); }),

      List(
          "VDRZAX_GetBridgeClusters",
          [](RecordList** out) { return VDRZAX_GetBridgeClusters("cluster", out); },
          VDRZAX_ReleaseBridgeClusters, 183, 10),
      List(
          "VDRZAX_GetBridgeClusterNodes",
          [](RecordList** out) { return VDRZAX_GetBridgeClusterNodes("cluster", out); },
          VDRZAX_ReleaseBridgeClusterNodes, 71, 100),
      Fetch(
          "VDRZAXGetBridgeClusters",
          [](RecordList* list) { return VDRZAXGetBridgeClusters("cluster", list); },
          VDRZAX_ReleaseBridgeClusters, 183, 10),
      Fetch(
          "VDRZAXGetBridgeClusterNodes",
          [](RecordList* list) { return VDRZAXGetBridgeClusterNodes("cluster", list); },
          VDRZAX_ReleaseBridgeClusterNodes, 71, 100),
      Command("VDRZAX_BridgeClusterSet", [] { return VDRZAX_BridgeClusterSet("cluster", 1); }),
      Command("VDRZAX_BridgeClusterSet", [] { return VDRZAX_BridgeClusterSet("cluster", 0); }),
      Command("VDRZAX_BridgeClusterNodeSet",
              [] { return VDRZAX_BridgeClusterNodeSet("cluster", "node", &kMac, 1); }),
      Command("VDRZAX_BridgeClusterNodeSet",
              [] { return VDRZAX_BridgeClusterNodeSet("cluster", "node", &kMac, 0); }),
      Command("VDRZAX_FlushBridgeCluster", [] { return VDRZAX_FlushBridgeCluster("cluster", 1); }),
      Command("VDRZAX_FlushBridgeCluster", [] { return VDRZAX_FlushBridgeCluster("cluster", 0); }),
      Command("VDRZAX_SetBridgeClusterDebug",
              [] { return VDRZAX_SetBridgeClusterDebug("cluster", 1); }),
      Command("VDRZAX_BridgeClusterBfdHAProfileSet",
              [] { return VDRZAX_BridgeClusterBfdHAProfileSet("cluster", 1, 2, 3); }),
      Release("VDRZAX_ReleaseBridgeClusters", VDRZAX_ReleaseBridgeClusters, 16),
      Release("VDRZAX_ReleaseBridgeClusterNodes", VDRZAX_ReleaseBridgeClusterNodes, 16),
      Command("VDRZAX_BridgeLocalTransportNodeSet",
              [] {
                return VDRZAX_BridgeLocalTransportNodeSet("one", "two", "three", 4, kNodeBytes, 1);
              }),
      Command("VDRZAX_BridgeLocalTransportNodeSet",
              [] {
                return VDRZAX_BridgeLocalTransportNodeSet("one", "two", "three", 4, kNodeBytes, 0);
              }),
      Raw(
          "VDRZAX_BridgeGetLocalTransportNode",
          [](void* buffer) { return VDRZAX_BridgeGetLocalTransportNode(buffer, 1); }, 2048),

      List(
          "VDRZAX_GetBridgeEndpoints",
          [](RecordList** out) { return VDRZAX_GetBridgeEndpoints("edge-1", out); },
          VDRZAX_ReleaseBridgeEndpoints, 235, 28672),
      List(
          "VDRZAX_GetBridgeBFDSessions",
          [](RecordList** out) { return VDRZAX_GetBridgeBFDSessions("edge-1", out); },
          VDRZAX_ReleaseBridgeBFDSessions, 39, 2867200),
      Fetch(
          "VDRZAXGetBridgeEndpoints",
          [](RecordList* list) { return VDRZAXGetBridgeEndpoints("edge-1", list); },
          VDRZAX_ReleaseBridgeEndpoints, 235, 28672),
      Fetch(
          "VDRZAXGetBridgeBFDSessions",
          [](RecordList* list) { return VDRZAXGetBridgeBFDSessions("edge-1", list); },
          VDRZAX_ReleaseBridgeBFDSessions, 39, 2867200),
      Release("VDRZAX_ReleaseBridgeEndpoints", VDRZAX_ReleaseBridgeEndpoints, 16),
      Release("VDRZAX_ReleaseBridgeBFDSessions", VDRZAX_ReleaseBridgeBFDSessions, 16),
      Command("VDRZAX_PlumbBFDPortConnection",
              [] { return VDRZAX_PlumbBFDPortConnection("port", "second", &kMac); }),
      Command("VDRZAX_UnPlumbBFDPortConnection",
              [] { return VDRZAX_UnPlumbBFDPortConnection("port"); }),
      Raw("VDRZAX_GetBFDPortConnections", VDRZAX_GetBFDPortConnections, 131072),
  };
}

}  // namespace sweep
