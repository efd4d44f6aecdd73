#include <vdrzax/bridge.h>

#include "bridge/bridge_bfd_session_record.h"
#include "bridge/bridge_cluster_node_record.h"
#include "bridge/bridge_cluster_record.h"
#include "bridge/bridge_endpoint_record.h"
#include "commands.h"
#include "commands/reading.h"

namespace vdrctl {

namespace {

using vdrzax::kBridgeBfdSessionRecord;
using vdrzax::kBridgeClusterNodeRecord;
using vdrzax::kBridgeClusterRecord;
using vdrzax::kBridgeEndpointRecord;

constexpr Object kObjects[] = {
    {"cluster", "Bridge clusters"},
    {"cluster node", "Nodes of bridge clusters"},
    {"cluster endpoint", "Endpoints of bridge clusters"},
    {"cluster bfd", "BFD of bridge clusters"},
    {"bfd-port", "BFD port connections"},
    {"transport-node", "The local transport node"},
};

constexpr Parameter kCluster = Name("CLUSTER", "Name of the cluster's owner");
constexpr Parameter kOnlyCluster =
    Optional(Name("CLUSTER", "Name of the cluster's owner; all when not given"));
constexpr Parameter kNode = Name("NODE", "Name of the node");

constexpr std::size_t kNodeBytes = 64;
constexpr Parameter kHexBytes = FormedText(
    "--bytes HEX", 2 * kNodeBytes, "64 bytes with a meaning of the kernel's, in hexadecimal",
    "at most 64 bytes in hexadecimal",
    [](std::string_view text) { return text.empty() || !ParseHexBytes(text).empty(); });

template <uint8_t kSet>
int ChangeTransportNode(const char* first, const char* second, const char* third, uint32_t value,
                        const char* hex) {
  auto bytes = ParseHexBytes(OrEmpty(hex));
  bytes.resize(kNodeBytes);
  return VDRZAX_BridgeLocalTransportNodeSet(first, OrEmpty(second), OrEmpty(third), value,
                                            bytes.data(), kSet);
}

constexpr Parameter kFirstName = Name("NAME", "Name of the transport node");
constexpr Parameter kSecondName = Name("--second-name TEXT", "Text with a meaning of the kernel's");
constexpr Parameter kThirdName =
    Text("--third-name TEXT", 15, "Text with a meaning of the kernel's");
constexpr Parameter kNodeValue = U32("--value N", "Word with a meaning of the kernel's");

constexpr Command kCommands[] = {
    {"cluster",
     "list",
     "List bridge clusters",
     {"VDRZAX_GetBridgeClusters", "VDRZAXGetBridgeClusters"},
     {89},
     {kOnlyCluster},
     Lists<VDRZAX_GetBridgeClusters, VDRZAX_ReleaseBridgeClusters>,
     ListReply<kBridgeClusterRecord>()},
    {"cluster",
     "create",
     "Create a bridge cluster",
     {"VDRZAX_BridgeClusterSet"},
     {90},
     {kCluster},
     Run<[](const char* cluster) { return VDRZAX_BridgeClusterSet(cluster, 1); }>},
    {"cluster",
     "delete",
     "Delete a bridge cluster",
     {"VDRZAX_BridgeClusterSet"},
     {91},
     {kCluster},
     Run<[](const char* cluster) { return VDRZAX_BridgeClusterSet(cluster, 0); }>},
    {"cluster",
     "flush",
     "Flush a bridge cluster, or all of them",
     {"VDRZAX_FlushBridgeCluster"},
     {103, 104},
     {Optional(kCluster), Switch("--all", "Flush all clusters")},
     Run<VDRZAX_FlushBridgeCluster>},
    {"cluster",
     "set-debug",
     "Set the debug level of bridge clusters",
     {"VDRZAX_SetBridgeClusterDebug"},
     {107},
     {U8("LEVEL", "Byte with a meaning of the kernel's"), kOnlyCluster},
     Run<[](uint8_t level, const char* cluster) {
       return VDRZAX_SetBridgeClusterDebug(cluster, level);
     }>},
    {"cluster node",
     "list",
     "List the nodes of bridge clusters",
     {"VDRZAX_GetBridgeClusterNodes", "VDRZAXGetBridgeClusterNodes"},
     {92},
     {kOnlyCluster},
     Lists<VDRZAX_GetBridgeClusterNodes, VDRZAX_ReleaseBridgeClusterNodes>,
     ListReply<kBridgeClusterNodeRecord>()},
    {"cluster node",
     "add",
     "Add a node to a bridge cluster",
     {"VDRZAX_BridgeClusterNodeSet"},
     {93},
     {kCluster, kNode, Mac("MAC", "Hardware address of the node")},
     Run<[](const char* cluster, const char* node, const MacValue* mac) {
       return VDRZAX_BridgeClusterNodeSet(cluster, node, mac, 1);
     }>},
    {"cluster node",
     "delete",
     "Remove a node from a bridge cluster",
     {"VDRZAX_BridgeClusterNodeSet"},
     {94},
     {kCluster, kNode},
     Run<[](const char* cluster, const char* node) {
       return VDRZAX_BridgeClusterNodeSet(cluster, node, nullptr, 0);
     }>},
    {"cluster endpoint",
     "list",
     "List bridge endpoints",
     {"VDRZAX_GetBridgeEndpoints", "VDRZAXGetBridgeEndpoints"},
     {95},
     {Optional(kInstance)},
     Lists<VDRZAX_GetBridgeEndpoints, VDRZAX_ReleaseBridgeEndpoints>,
     ListReply<kBridgeEndpointRecord>()},
    {"cluster bfd",
     "sessions",
     "List BFD sessions",
     {"VDRZAX_GetBridgeBFDSessions", "VDRZAXGetBridgeBFDSessions"},
     {96},
     {Optional(kInstance)},
     Lists<VDRZAX_GetBridgeBFDSessions, VDRZAX_ReleaseBridgeBFDSessions>,
     ListReply<kBridgeBfdSessionRecord>()},
    {"cluster bfd",
     "set-profile",
     "Set the BFD profile for the high availability of a bridge cluster",
     {"VDRZAX_BridgeClusterBfdHAProfileSet"},
     {106},
     {kCluster, U8("PROFILE", "Number of the profile"),
      U32("--value1 N", "Word with a meaning of the kernel's"),
      U32("--value2 N", "Word with a meaning of the kernel's")},
     Run<VDRZAX_BridgeClusterBfdHAProfileSet>},

    {"bfd-port",
     "list",
     "Show the BFD port connections, in the kernel's own layout",
     {"VDRZAX_GetBFDPortConnections"},
     {99},
     {kOutput},
     ShowsBytes<VDRZAX_GetBFDPortConnections, 131072>,
     BytesReply()},
    {"bfd-port",
     "plumb",
     "Create a BFD port connection",
     {"VDRZAX_PlumbBFDPortConnection"},
     {97},
     {Name("PORT", "Name of the port"),
      Text("--second-name TEXT", 15, "Text with a meaning of the kernel's"),
      Mac("--mac MAC", "Hardware address")},
     Run<[](const char* port, const char* secondName, const MacValue* mac) {
       return VDRZAX_PlumbBFDPortConnection(port, OrEmpty(secondName), mac);
     }>},
    {"bfd-port",
     "unplumb",
     "Remove a BFD port connection",
     {"VDRZAX_UnPlumbBFDPortConnection"},
     {98},
     {Name("PORT", "Name of the port")},
     Run<VDRZAX_UnPlumbBFDPortConnection>},

    {"transport-node",
     "show",
     "Show the local transport node, in the kernel's own layout",
     {"VDRZAX_BridgeGetLocalTransportNode"},
     {102},
     {U32("--selector N", "Word with a meaning of the kernel's"), kOutput},
     Run<[](Output& out, uint32_t selector, const char* file) {
       return PrintBytes(out, 2048, file, [&](uint8_t* bytes) {
         return VDRZAX_BridgeGetLocalTransportNode(bytes, selector);
       });
     }>,
     BytesReply()},
    {"transport-node",
     "set",
     "Set the local transport node; what is not given becomes 0 or empty",
     {"VDRZAX_BridgeLocalTransportNodeSet"},
     {100},
     {kFirstName, kSecondName, kThirdName, kNodeValue, kHexBytes},
     Run<ChangeTransportNode<1>>},
    {"transport-node",
     "clear",
     "Clear the local transport node that was set so",
     {"VDRZAX_BridgeLocalTransportNodeSet"},
     {101},
     {kFirstName, kSecondName, kThirdName, kNodeValue, kHexBytes},
     Run<ChangeTransportNode<0>>},
};

}  // namespace

constinit const Family kClusterFamily{kObjects, kCommands};

}  // namespace vdrctl
