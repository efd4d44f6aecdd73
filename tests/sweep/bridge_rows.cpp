#include "sweep/sweep.h"

namespace sweep {

namespace {

constexpr MacValue kMac{{2, 0, 0, 0, 0, 1}};
constexpr uint8_t kNodeBytes[64] = {1, 2, 3};

}  // namespace

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
      Release("VDRZAX_ReleaseBridgeEndpoints", VDRZAX_ReleaseBridgeEndpoints, 16),
      Release("VDRZAX_ReleaseBridgeBFDSessions", VDRZAX_ReleaseBridgeBFDSessions, 16),
      Command("VDRZAX_PlumbBFDPortConnection",
              [] { return VDRZAX_PlumbBFDPortConnection("port", "second", &kMac); }),
      Command("VDRZAX_UnPlumbBFDPortConnection",
              [] { return VDRZAX_UnPlumbBFDPortConnection("port"); }),
  };
}

}  // namespace sweep
