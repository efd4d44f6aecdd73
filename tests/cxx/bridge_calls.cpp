#include "cxx/calls.h"

namespace cxx {

namespace {

constexpr vdrzax::Bytes<64> kNode{1, 2, 0, 4};
constexpr vdrzax::Bytes<64> kNoNode{};

// The header of these fetches stays the caller's when the device refuses.
int DoneOrMine(int status, RecordList* list, void (*release)(RecordList*)) {
  if (status != 0) std::free(list);
  return Done(status, list, release);
}

}  // namespace

Rows BridgeCalls() {
  return {
      {"VDRZAX_SetBridgeLif",
       [] {
         return VDRZAX_SetBridgeLif("text-1", "text-2", 0x31223340U, 0x41223340U, 0x51223340U,
                                    "text-6", 1);
       },
       FACE(set_bridge_lif, "text-6", "text-1",
            {.second_name = "text-2",
             .value1 = 0x31223340U,
             .value2 = 0x41223340U,
             .value3 = 0x51223340U},
            true),
       0},
      {"VDRZAX_AddBridgeEndpoint",
       [] {
         return VDRZAX_AddBridgeEndpoint("text-1", "text-2", "text-3", 0x41223340U, 0x51223340U,
                                         "text-6", 0x7122, 0x81, "text-9", 0xa1);
       },
       FACE(add_bridge_endpoint, "text-1", "text-3",
            {.second_name = "text-2",
             .value1 = 0x41223340U,
             .value2 = 0x51223340U,
             .fourth_name = "text-6",
             .tag = 0x7122,
             .flag1 = 0x81,
             .fifth_name = "text-9",
             .flag2 = 0xa1}),
       0},
      {"VDRZAX_DelBridgeEndpoint", [] { return VDRZAX_DelBridgeEndpoint("text-1", "text-2"); },
       FACE(delete_bridge_endpoint, "text-1", "text-2"), 0},
      {"VDRZAX_FlushBridgeEndpoint", [] { return VDRZAX_FlushBridgeEndpoint(0x11); },
       FACE(flush_bridge_endpoint, true), 0},
      {"VDRZAX_SetBridgeRepMode", [] { return VDRZAX_SetBridgeRepMode("text-1", 0x21223340U); },
       FACE(set_bridge_rep_mode, "text-1", 0x21223340U), 0},
      {"VDRZAX_GetBridgeInstance",
       [] {
         BridgeInstanceRecord* out = nullptr;
         return Done(VDRZAX_GetBridgeInstance("text-1", &out), out, VDRZAX_ReleaseBridgeInstance);
       },
       FACE(bridge_instance, "text-1"), sizeof(BridgeInstanceRecord)},
      {"VDRZAX_GetBridgeInstance",
       [] {
         BridgeInstanceRecord* out = nullptr;
         return Done(VDRZAX_GetBridgeInstance("text-1", &out), out, VDRZAX_ReleaseBridgeInstance);
       },
       FACE(find_bridge_instance, "text-1"), sizeof(BridgeInstanceRecord)},
      {"VDRZAX_GetBridgeInstances",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetBridgeInstances(&out), out, VDRZAX_ReleaseBridgeInstances);
       },
       FACE(bridge_instances), 0},
      {"VDRZAXGetBridgeInstances",
       [] {
         auto* list = static_cast<RecordList*>(std::calloc(1, sizeof(RecordList)));
         return DoneOrMine(VDRZAXGetBridgeInstances(list), list, VDRZAX_ReleaseBridgeInstances);
       },
       FACE(fetch_bridge_instances), 0},
      {"VDRZAX_GetBridgeNetworks",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetBridgeNetworks("text-1", "text-2", &out), out,
                     VDRZAX_ReleaseBridgeNetworks);
       },
       FACE(bridge_networks, "text-2"), 0},
      {"VDRZAXGetBridgeNetworks",
       [] {
         auto* list = static_cast<RecordList*>(std::calloc(1, sizeof(RecordList)));
         return DoneOrMine(VDRZAXGetBridgeNetworks("text-1", "text-2", list), list,
                           VDRZAX_ReleaseBridgeNetworks);
       },
       FACE(fetch_bridge_networks, "text-2"), 0},
      {"VDRZAX_GetBridgePorts",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetBridgePorts("text-1", "text-2", 0x3122, 0x41223340U, &out), out,
                     VDRZAX_ReleaseBridgePorts);
       },
       FACE(bridge_ports, "text-2", 0x3122, 0x41223340U), 0},
      {"VDRZAXGetBridgePorts",
       [] {
         auto* list = static_cast<RecordList*>(std::calloc(1, sizeof(RecordList)));
         return DoneOrMine(VDRZAXGetBridgePorts("text-1", "text-2", 0x3122, 0x41223340U, list),
                           list, VDRZAX_ReleaseBridgePorts);
       },
       FACE(fetch_bridge_ports, "text-2", 0x3122, 0x41223340U), 0},
      {"VDRZAX_GetBridgeFdbEntries",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetBridgeFdbEntries("text-1", 0x2122, 0x31223340U, &out), out,
                     VDRZAX_ReleaseBridgeFdbEntries);
       },
       FACE(bridge_fdb_entries, "text-1", 0x2122, 0x31223340U), 0},
      {"VDRZAXGetBridgeFdbEntries",
       [] {
         auto* list = static_cast<RecordList*>(std::calloc(1, sizeof(RecordList)));
         return DoneOrMine(VDRZAXGetBridgeFdbEntries("text-1", 0x2122, 0x31223340U, list), list,
                           VDRZAX_ReleaseBridgeFdbEntries);
       },
       FACE(fetch_bridge_fdb_entries, "text-1", 0x2122, 0x31223340U), 0},
      {"VDRZAX_GetBridgeClusters",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetBridgeClusters("text-1", &out), out, VDRZAX_ReleaseBridgeClusters);
       },
       FACE(bridge_clusters, "text-1"), 0},
      {"VDRZAXGetBridgeClusters",
       [] {
         auto* list = static_cast<RecordList*>(std::calloc(1, sizeof(RecordList)));
         return Done(VDRZAXGetBridgeClusters("text-1", list), list, VDRZAX_ReleaseBridgeClusters);
       },
       FACE(fetch_bridge_clusters, "text-1"), 0},
      {"VDRZAX_GetBridgeClusterNodes",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetBridgeClusterNodes("text-1", &out), out,
                     VDRZAX_ReleaseBridgeClusterNodes);
       },
       FACE(bridge_cluster_nodes, "text-1"), 0},
      {"VDRZAXGetBridgeClusterNodes",
       [] {
         auto* list = static_cast<RecordList*>(std::calloc(1, sizeof(RecordList)));
         return Done(VDRZAXGetBridgeClusterNodes("text-1", list), list,
                     VDRZAX_ReleaseBridgeClusterNodes);
       },
       FACE(fetch_bridge_cluster_nodes, "text-1"), 0},
      {"VDRZAX_GetBridgeEndpoints",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetBridgeEndpoints("text-1", &out), out, VDRZAX_ReleaseBridgeEndpoints);
       },
       FACE(bridge_endpoints, "text-1"), 0},
      {"VDRZAXGetBridgeEndpoints",
       [] {
         auto* list = static_cast<RecordList*>(std::calloc(1, sizeof(RecordList)));
         return Done(VDRZAXGetBridgeEndpoints("text-1", list), list, VDRZAX_ReleaseBridgeEndpoints);
       },
       FACE(fetch_bridge_endpoints, "text-1"), 0},
      {"VDRZAX_GetBridgeBFDSessions",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetBridgeBFDSessions("text-1", &out), out,
                     VDRZAX_ReleaseBridgeBFDSessions);
       },
       FACE(bridge_bfd_sessions, "text-1"), 0},
      {"VDRZAXGetBridgeBFDSessions",
       [] {
         auto* list = static_cast<RecordList*>(std::calloc(1, sizeof(RecordList)));
         return Done(VDRZAXGetBridgeBFDSessions("text-1", list), list,
                     VDRZAX_ReleaseBridgeBFDSessions);
       },
       FACE(fetch_bridge_bfd_sessions, "text-1"), 0},
      {"VDRZAX_GetBeStats", [] { return VDRZAX_GetBeStats("text-1", Scratch()); },
       FACE(be_stats, "text-1"), 0},
      {"VDRZAX_GetBeStatus", [] { return VDRZAX_GetBeStatus("text-1", Scratch()); },
       FACE(be_status, "text-1"), 0},
      {"VDRZAX_GetBeAll",
       [] {
         std::uint32_t number = 0;
         return VDRZAX_GetBeAll(Scratch(), 3 * 235, &number);
       },
       FACE(be_all, 3), 0},
      {"VDRZAX_BridgeSetFdbEntry",
       [] {
         return VDRZAX_BridgeSetFdbEntry("text-1", "text-2", 0x31223340U, 0x41223340U, 0x51223340U,
                                         0x61);
       },
       FACE(set_bridge_fdb_entry, "text-1",
            {.mac_text = "text-2",
             .segment = 0x31223340U,
             .selector = 0x41223340U,
             .value = 0x51223340U,
             .flag = 0x61}),
       0},
      {"VDRZAX_BridgeClearFdbTable",
       [] { return VDRZAX_BridgeClearFdbTable("text-1", 0x21223340U, 0x31223340U); },
       FACE(clear_bridge_fdb_table, "text-1", 0x21223340U, 0x31223340U), 0},
      {"VDRZAX_BridgeSetConfig",
       [] { return VDRZAX_BridgeSetConfig("text-1", 0x21223340U, 0x31223340U); },
       FACE(set_bridge_config, "text-1", 0x21223340U, 0x31223340U), 0},
      {"VDRZAX_BridgeAdd", [] { return VDRZAX_BridgeAdd("text-1", 0x21223340U); },
       FACE(add_bridge, "text-1", 0x21223340U), 0},
      {"VDRZAX_BridgeDel", [] { return VDRZAX_BridgeDel("text-1", 0x21223340U); },
       FACE(delete_bridge, "text-1", 0x21223340U), 0},
      {"VDRZAX_BridgeSetHAAdminState",
       [] { return VDRZAX_BridgeSetHAAdminState("text-1", 0x21223340U); },
       FACE(set_bridge_ha_admin_state, "text-1", 0x21223340U), 0},
      {"VDRZAX_BridgeEnable", [] { return VDRZAX_BridgeEnable("text-1", 0x21); },
       FACE(enable_bridge, "text-1", 0x21), 0},
      {"VDRZAX_BridgeDisable", [] { return VDRZAX_BridgeDisable("text-1", 0x21); },
       FACE(disable_bridge, "text-1", 0x21), 0},
      {"VDRZAX_BridgeClusterSet", [] { return VDRZAX_BridgeClusterSet("text-1", 0x21); },
       FACE(set_bridge_cluster, "text-1", true), 0},
      {"VDRZAX_BridgeClusterNodeSet",
       [] { return VDRZAX_BridgeClusterNodeSet("text-1", "text-2", &kMac, 0x41); },
       FACE(set_bridge_cluster_node, "text-1", "text-2", kMacBytes, true), 0},
      {"VDRZAX_FlushBridgeCluster", [] { return VDRZAX_FlushBridgeCluster("text-1", 0x21); },
       FACE(flush_bridge_cluster, "text-1", true), 0},
      {"VDRZAX_SetBridgeClusterDebug", [] { return VDRZAX_SetBridgeClusterDebug("text-1", 0x21); },
       FACE(set_bridge_cluster_debug, "text-1", 0x21), 0},
      {"VDRZAX_BridgeClusterBfdHAProfileSet",
       [] { return VDRZAX_BridgeClusterBfdHAProfileSet("text-1", 0x21, 0x31223340U, 0x41223340U); },
       FACE(set_bridge_cluster_bfd_ha_profile, "text-1", 0x21, 0x31223340U, 0x41223340U), 0},
      {"VDRZAX_BridgeLocalTransportNodeSet",
       [] {
         return VDRZAX_BridgeLocalTransportNodeSet("text-1", "text-2", "text-3", 0x41223340U,
                                                   kNode.data(), 0x61);
       },
       FACE(set_local_transport_node,
            {.name1 = "text-1",
             .name2 = "text-2",
             .name3 = "text-3",
             .value = 0x41223340U,
             .bytes = kNode},
            true),
       0},
      {"VDRZAX_BridgeGetLocalTransportNode",
       [] { return VDRZAX_BridgeGetLocalTransportNode(Scratch(), 0x21223340U); },
       FACE(local_transport_node, 0x21223340U), 0},
      {"VDRZAX_PlumbBFDPortConnection",
       [] { return VDRZAX_PlumbBFDPortConnection("text-1", "text-2", &kMac); },
       FACE(plumb_bfd_port_connection, "text-1", "text-2", kMacBytes), 0},
      {"VDRZAX_UnPlumbBFDPortConnection", [] { return VDRZAX_UnPlumbBFDPortConnection("text-1"); },
       FACE(unplumb_bfd_port_connection, "text-1"), 0},
      {"VDRZAX_GetBFDPortConnections", [] { return VDRZAX_GetBFDPortConnections(Scratch()); },
       FACE(bfd_port_connections), 0},
      {"VDRZAX_SetBridgeLif",
       [] { return VDRZAX_SetBridgeLif("text-1", "text-2", 3, 4, 5, "text-6", 0); },
       FACE(set_bridge_lif, "text-6", "text-1",
            {.second_name = "text-2", .value1 = 3, .value2 = 4, .value3 = 5}, false),
       0},
      {"VDRZAX_FlushBridgeEndpoint", [] { return VDRZAX_FlushBridgeEndpoint(0); },
       FACE(flush_bridge_endpoint, false), 0},
      {"VDRZAX_BridgeClusterSet", [] { return VDRZAX_BridgeClusterSet("text-1", 0); },
       FACE(set_bridge_cluster, "text-1", false), 0},
      {"VDRZAX_BridgeClusterNodeSet",
       [] { return VDRZAX_BridgeClusterNodeSet("text-1", "text-2", nullptr, 0); },
       FACE(set_bridge_cluster_node, "text-1", "text-2", {}, false), 0},
      {"VDRZAX_FlushBridgeCluster", [] { return VDRZAX_FlushBridgeCluster(nullptr, 0); },
       FACE(flush_bridge_cluster, {}, false), 0},
      {"VDRZAX_BridgeLocalTransportNodeSet",
       [] { return VDRZAX_BridgeLocalTransportNodeSet("", "", "", 0, kNoNode.data(), 0); },
       FACE(set_local_transport_node, {}, false), 0},
      {"VDRZAX_GetBridgeClusters",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetBridgeClusters(nullptr, &out), out, VDRZAX_ReleaseBridgeClusters);
       },
       FACE(bridge_clusters), 0},
      {"VDRZAX_BridgeSetFdbEntry",
       [] { return VDRZAX_BridgeSetFdbEntry("text-1", nullptr, 3, 4, 5, 6); },
       FACE(set_bridge_fdb_entry, "text-1", {.segment = 3, .selector = 4, .value = 5, .flag = 6}),
       0},
      {"VDRZAX_PlumbBFDPortConnection",
       [] { return VDRZAX_PlumbBFDPortConnection("text-1", "text-2", nullptr); },
       FACE(plumb_bfd_port_connection, "text-1", "text-2"), 0},
  };
}

}  // namespace cxx
