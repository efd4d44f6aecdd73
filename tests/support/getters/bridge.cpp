#include <vdrzax/bridge.h>

#include "support/getters/table.h"

namespace getters {

using wire::Block;

// The getters of instances, networks, ports and forwarding entries lose their header when the
// command fails; the fetches beside them leave it to the caller there. The lists of clusters,
// nodes, endpoints and sessions free it in both.
const Family& Bridge() {
  static const Family family{
      .lists = {{.name = "VDRZAX_GetBridgeInstances",
                 .call = VDRZAX_GetBridgeInstances,
                 .release = VDRZAX_ReleaseBridgeInstances,
                 .fetch = VDRZAXGetBridgeInstances,
                 .code = 61,
                 .size = 393,
                 .cap = 4096,
                 .dropsHeader = true},
                {.name = "VDRZAX_GetBridgeNetworks",
                 .call = [](auto** out) { return VDRZAX_GetBridgeNetworks("first", "b-1", out); },
                 .release = VDRZAX_ReleaseBridgeNetworks,
                 .fetch = [](auto* list) { return VDRZAXGetBridgeNetworks("first", "b-1", list); },
                 .code = 63,
                 .block = Block().Text(0, "b-1"),
                 .size = 133,
                 .cap = 32768,
                 .dropsHeader = true},
                {.name = "VDRZAX_GetBridgePorts",
                 .call =
                     [](auto** out) {
                       return VDRZAX_GetBridgePorts("first", "b-1", 0x1122, 0x33445566, out);
                     },
                 .release = VDRZAX_ReleaseBridgePorts,
                 .fetch =
                     [](auto* list) {
                       return VDRZAXGetBridgePorts("first", "b-1", 0x1122, 0x33445566, list);
                     },
                 .code = 64,
                 .block = Block().Text(0, "b-1").U32(260, 0x1122).U32(264, 0x33445566).U32(268, 1),
                 .size = 146,
                 .cap = 32768,
                 .dropsHeader = true},
                {.name = "VDRZAX_GetBridgeFdbEntries",
                 .call =
                     [](auto** out) {
                       return VDRZAX_GetBridgeFdbEntries("edge-1", 0x1122, 0x33445566, out);
                     },
                 .release = VDRZAX_ReleaseBridgeFdbEntries,
                 .fetch =
                     [](auto* list) {
                       return VDRZAXGetBridgeFdbEntries("edge-1", 0x1122, 0x33445566, list);
                     },
                 .code = 65,
                 .block =
                     Block().Text(0, "edge-1").U32(260, 0x1122).U32(264, 0x33445566).U32(268, 1),
                 .size = 20,
                 .cap = 10240,
                 .dropsHeader = true},
                {.name = "VDRZAX_GetBridgeClusters",
                 .call = [](auto** out) { return VDRZAX_GetBridgeClusters("edge-1", out); },
                 .release = VDRZAX_ReleaseBridgeClusters,
                 .fetch = [](auto* list) { return VDRZAXGetBridgeClusters("edge-1", list); },
                 .code = 89,
                 .block = Block().Text(0, "edge-1"),
                 .size = 183,
                 .cap = 10},
                {.name = "VDRZAX_GetBridgeClusterNodes",
                 .call = [](auto** out) { return VDRZAX_GetBridgeClusterNodes("edge-1", out); },
                 .release = VDRZAX_ReleaseBridgeClusterNodes,
                 .fetch = [](auto* list) { return VDRZAXGetBridgeClusterNodes("edge-1", list); },
                 .code = 92,
                 .block = Block().Text(0, "edge-1"),
                 .size = 71,
                 .cap = 100},
                {.name = "VDRZAX_GetBridgeEndpoints",
                 .call = [](auto** out) { return VDRZAX_GetBridgeEndpoints("edge-1", out); },
                 .release = VDRZAX_ReleaseBridgeEndpoints,
                 .fetch = [](auto* list) { return VDRZAXGetBridgeEndpoints("edge-1", list); },
                 .code = 95,
                 .block = Block().Text(0, "edge-1"),
                 .size = 235,
                 .cap = 28672},
                {.name = "VDRZAX_GetBridgeBFDSessions",
                 .call = [](auto** out) { return VDRZAX_GetBridgeBFDSessions("edge-1", out); },
                 .release = VDRZAX_ReleaseBridgeBFDSessions,
                 .fetch = [](auto* list) { return VDRZAXGetBridgeBFDSessions("edge-1", list); },
                 .code = 96,
                 .block = Block().Text(0, "edge-1"),
                 .size = 39,
                 .cap = 2867200}},
      .records = {{.name = "VDRZAX_GetBridgeInstance",
                   .call = Get<BridgeInstanceRecord>(
                       [](auto** out) { return VDRZAX_GetBridgeInstance("edge-1", out); }),
                   .release = Free(VDRZAX_ReleaseBridgeInstance),
                   .code = 62,
                   .block = Block().Text(0, "edge-1"),
                   .size = 393}},
      .raws = {{.name = "VDRZAX_GetBeStats",
                .call = [](void* buffer) { return VDRZAX_GetBeStats("lif-1", buffer); },
                .code = 50,
                .block = Block().Text(384, "lif-1"),
                .size = 146},
               {.name = "VDRZAX_GetBeStatus",
                .call = [](void* buffer) { return VDRZAX_GetBeStatus("lif-1", buffer); },
                .code = 51,
                .block = Block().Text(384, "lif-1"),
                .size = 229},
               {.name = "VDRZAX_GetBFDPortConnections",
                .call = VDRZAX_GetBFDPortConnections,
                .code = 99,
                .size = 131072},
               {.name = "VDRZAX_BridgeGetLocalTransportNode",
                .call =
                    [](void* buffer) {
                      return VDRZAX_BridgeGetLocalTransportNode(buffer, 0x11223344);
                    },
                .code = 102,
                .block = Block().U32(468, 0x11223344),
                .size = 2048}},
      // The caller says how many bytes there is room for.
      .others = {{.name = "VDRZAX_GetBeAll", .code = 52, .size = 235}}};
  return family;
}

}  // namespace getters
