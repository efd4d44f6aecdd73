#pragma once

#include <vdrzax/bridge.h>

#include <vdrzax/cxx/call.hpp>

// Bridges: LIFs, endpoints, forwarding, administration, clusters, BFD.
namespace vdrzax {
inline namespace v1 {

// A bridge instance.
class BridgeInstance : public View<BridgeInstanceRecord> {
 public:
  using View::View;

  std::uint64_t qword0() const noexcept { return raw().qword0; }
  std::uint32_t word8() const noexcept { return raw().word8; }
  std::string_view name() const noexcept { return text(raw().name); }
  std::uint32_t word76() const noexcept { return raw().word76; }
  std::uint32_t word80() const noexcept { return raw().word80; }
  std::string_view text84() const noexcept { return text(raw().text84); }
  std::string_view text212() const noexcept { return text(raw().text212); }
  std::uint32_t word305() const noexcept { return raw().word305; }
  std::uint32_t word309() const noexcept { return raw().word309; }
  std::array<std::uint64_t, 10> qwords313() const noexcept {
    return copy<std::array<std::uint64_t, 10>>(offsetof(Record, qwords313));
  }

  static void release(BridgeInstanceRecord* record) noexcept {
    VDRZAX_ReleaseBridgeInstance(record);
  }
  static void release(RecordList* list) noexcept { VDRZAX_ReleaseBridgeInstances(list); }
};

// A network of a bridge.
class BridgeNetwork : public View<BridgeNetworkRecord> {
 public:
  using View::View;

  std::uint64_t qword0() const noexcept { return raw().qword0; }
  std::uint32_t word8() const noexcept { return raw().word8; }
  std::uint16_t half12() const noexcept { return raw().half12; }
  std::uint32_t word14() const noexcept { return raw().word14; }
  std::uint16_t half18() const noexcept { return raw().half18; }
  std::uint32_t word20() const noexcept { return raw().word20; }
  std::uint32_t word24() const noexcept { return raw().word24; }
  std::uint8_t byte28() const noexcept { return raw().byte28; }
  std::array<std::uint64_t, 12> qwords29() const noexcept {
    return copy<std::array<std::uint64_t, 12>>(offsetof(Record, qwords29));
  }

  static void release(BridgeNetworkRecord* record) noexcept { VDRZAX_ReleaseBridgeNetwork(record); }
  static void release(RecordList* list) noexcept { VDRZAX_ReleaseBridgeNetworks(list); }
};

// A port of a bridge.
class BridgePort : public View<BridgePortRecord> {
 public:
  using View::View;

  std::uint64_t qword0() const noexcept { return raw().qword0; }
  std::uint32_t word8() const noexcept { return raw().word8; }
  std::uint16_t half12() const noexcept { return raw().half12; }
  std::uint32_t word14() const noexcept { return raw().word14; }
  std::array<std::uint64_t, 16> qwords18() const noexcept {
    return copy<std::array<std::uint64_t, 16>>(offsetof(Record, qwords18));
  }

  static void release(RecordList* list) noexcept { VDRZAX_ReleaseBridgePorts(list); }
};

// An entry of a forwarding database.
class BridgeFdbEntry : public View<BridgeFdbRecord> {
 public:
  using View::View;

  std::uint32_t word0() const noexcept { return raw().word0; }
  std::uint16_t half4() const noexcept { return raw().half4; }
  std::uint16_t half6() const noexcept { return raw().half6; }
  Bytes<3> triple8() const noexcept { return copy<Bytes<3>>(offsetof(Record, triple8)); }
  std::uint8_t flags() const noexcept { return raw().flags; }
  std::uint32_t word12() const noexcept { return raw().word12; }
  std::uint32_t word16() const noexcept { return raw().word16; }

  static void release(RecordList* list) noexcept { VDRZAX_ReleaseBridgeFdbEntries(list); }
};

// A bridge cluster.
class BridgeCluster : public View<BridgeClusterRecord> {
 public:
  using View::View;

  Bytes<64> name_area() const noexcept { return copy<Bytes<64>>(offsetof(Record, nameArea)); }
  std::uint32_t word72() const noexcept { return raw().word72; }
  Bytes<96> bytes76() const noexcept { return copy<Bytes<96>>(offsetof(Record, bytes76)); }
  std::uint16_t half172() const noexcept { return raw().half172; }
  std::uint16_t half174() const noexcept { return raw().half174; }
  std::uint16_t half176() const noexcept { return raw().half176; }
  std::uint8_t byte178() const noexcept { return raw().byte178; }
  std::uint32_t word179() const noexcept { return raw().word179; }

  static void release(RecordList* list) noexcept { VDRZAX_ReleaseBridgeClusters(list); }
};

// A node of a bridge cluster.
class BridgeClusterNode : public View<BridgeClusterNodeRecord> {
 public:
  using View::View;

  Bytes<64> name_area() const noexcept { return copy<Bytes<64>>(offsetof(Record, nameArea)); }
  std::uint32_t word64() const noexcept { return raw().word64; }
  std::uint16_t half68() const noexcept { return raw().half68; }
  std::uint8_t byte70() const noexcept { return raw().byte70; }

  static void release(RecordList* list) noexcept { VDRZAX_ReleaseBridgeClusterNodes(list); }
};

// A bridge endpoint.
class BridgeEndpoint : public View<BridgeEndpointRecord> {
 public:
  using View::View;

  Bytes<64> name_area() const noexcept { return copy<Bytes<64>>(offsetof(Record, nameArea)); }
  std::uint16_t half128() const noexcept { return raw().half128; }
  std::uint8_t flag() const noexcept { return raw().flag; }
  std::uint32_t word131() const noexcept { return raw().word131; }
  std::uint32_t word135() const noexcept { return raw().word135; }
  Bytes<96> bytes139() const noexcept { return copy<Bytes<96>>(offsetof(Record, bytes139)); }

  static void release(RecordList* list) noexcept { VDRZAX_ReleaseBridgeEndpoints(list); }
};

// A BFD session that watches a bridge endpoint.
class BridgeBfdSession : public View<BridgeBfdSessionRecord> {
 public:
  using View::View;

  std::uint16_t half0() const noexcept { return raw().half0; }
  std::uint32_t word2() const noexcept { return raw().word2; }
  std::uint16_t half6() const noexcept { return raw().half6; }
  std::uint32_t word8() const noexcept { return raw().word8; }
  std::uint16_t half12() const noexcept { return raw().half12; }
  std::uint32_t word14() const noexcept { return raw().word14; }
  std::uint8_t byte18() const noexcept { return raw().byte18; }
  std::uint32_t word19() const noexcept { return raw().word19; }
  std::uint64_t qword23() const noexcept { return raw().qword23; }
  std::uint64_t qword31() const noexcept { return raw().qword31; }

  static void release(RecordList* list) noexcept { VDRZAX_ReleaseBridgeBFDSessions(list); }
};

// What marks a LIF as a bridge LIF; `second_name` is required.
struct BridgeLifSettings {
  Text second_name = "";
  std::uint32_t value1 = 0;
  std::uint32_t value2 = 0;
  std::uint32_t value3 = 0;
};

// What a bridge endpoint is added with; the three names are required.
struct BridgeEndpointSettings {
  Text second_name = "";
  std::uint32_t value1 = 0;
  std::uint32_t value2 = 0;
  Text fourth_name = "";
  std::uint16_t tag = 0;
  std::uint8_t flag1 = 0;
  Text fifth_name = "";
  std::uint8_t flag2 = 0;
};

// An entry of a forwarding database. `mac_text` has at most 17 characters and may be left out.
struct BridgeFdbSettings {
  Text mac_text = {};
  std::uint32_t segment = 0;
  std::uint32_t selector = 0;
  std::uint32_t value = 0;
  std::uint8_t flag = 0;
};

// The local transport node. The three names are required; `name3` has at most 15 characters.
struct LocalTransportNodeSettings {
  Text name1 = "";
  Text name2 = "";
  Text name3 = "";
  std::uint32_t value = 0;
  Bytes<64> bytes = {};
};

// Bridge endpoints as the kernel's own records.
using RawBridgeEndpoints = RawTable<235>;

class BridgeCalls {
 public:
  // Marks a LIF as a bridge LIF, or clears the mark.
  result<void> try_set_bridge_lif(Text instance_name, Text lif_name,
                                  const BridgeLifSettings& settings = {},
                                  bool set = true) const noexcept {
    return detail::Command("VDRZAX_SetBridgeLif", VDRZAX_SetBridgeLif, detail::Name(lif_name),
                           detail::Name(settings.second_name), settings.value1, settings.value2,
                           settings.value3, detail::Name(instance_name), set);
  }
  result<void> try_add_bridge_endpoint(Text lif_name, Text endpoint_name,
                                       const BridgeEndpointSettings& settings = {}) const noexcept {
    return detail::Command("VDRZAX_AddBridgeEndpoint", VDRZAX_AddBridgeEndpoint,
                           detail::Name(lif_name), detail::Name(settings.second_name),
                           detail::Name(endpoint_name), settings.value1, settings.value2,
                           detail::Name(settings.fourth_name), settings.tag, settings.flag1,
                           detail::Name(settings.fifth_name), settings.flag2);
  }
  result<void> try_delete_bridge_endpoint(Text lif_name, Text endpoint_name) const noexcept {
    return detail::Command("VDRZAX_DelBridgeEndpoint", VDRZAX_DelBridgeEndpoint,
                           detail::Name(lif_name), detail::Name(endpoint_name));
  }
  result<void> try_flush_bridge_endpoint(bool all) const noexcept {
    return detail::Command("VDRZAX_FlushBridgeEndpoint", VDRZAX_FlushBridgeEndpoint, all);
  }
  result<void> try_set_bridge_rep_mode(Text instance_name, std::uint32_t mode) const noexcept {
    return detail::Command("VDRZAX_SetBridgeRepMode", VDRZAX_SetBridgeRepMode,
                           detail::Name(instance_name), mode);
  }
  result<Owned<BridgeInstance>> try_bridge_instance(Text instance_name) const noexcept {
    return detail::Record<BridgeInstance>("VDRZAX_GetBridgeInstance", VDRZAX_GetBridgeInstance,
                                          detail::Name(instance_name));
  }
  result<Owned<BridgeInstance>> try_find_bridge_instance(Text instance_name) const noexcept {
    return detail::Found(try_bridge_instance(instance_name));
  }
  // The lists that have a fetch are got either way; of these, networks, ports and forwarding entries the
  // fetch loses no header of 16 bytes when the command fails.
  result<List<BridgeInstance>> try_bridge_instances() const noexcept {
    return detail::ReadList<BridgeInstance>("VDRZAX_GetBridgeInstances", VDRZAX_GetBridgeInstances);
  }
  result<List<BridgeInstance>> try_fetch_bridge_instances() const noexcept {
    return detail::Fetch<BridgeInstance, detail::HeaderAfterFailure::Callers>(
        "VDRZAXGetBridgeInstances", VDRZAXGetBridgeInstances);
  }
  // The C function takes two names and sends the second; here it is both.
  result<List<BridgeNetwork>> try_bridge_networks(Text name) const noexcept {
    return detail::ReadList<BridgeNetwork>("VDRZAX_GetBridgeNetworks", VDRZAX_GetBridgeNetworks,
                                           detail::Name(name), detail::Name(name));
  }
  result<List<BridgeNetwork>> try_fetch_bridge_networks(Text name) const noexcept {
    return detail::Fetch<BridgeNetwork, detail::HeaderAfterFailure::Callers>(
        "VDRZAXGetBridgeNetworks", VDRZAXGetBridgeNetworks, detail::Name(name), detail::Name(name));
  }
  result<List<BridgePort>> try_bridge_ports(Text name, std::uint16_t network,
                                            std::uint32_t value) const noexcept {
    return detail::ReadList<BridgePort>("VDRZAX_GetBridgePorts", VDRZAX_GetBridgePorts,
                                        detail::Name(name), detail::Name(name), network, value);
  }
  result<List<BridgePort>> try_fetch_bridge_ports(Text name, std::uint16_t network,
                                                  std::uint32_t value) const noexcept {
    return detail::Fetch<BridgePort, detail::HeaderAfterFailure::Callers>(
        "VDRZAXGetBridgePorts", VDRZAXGetBridgePorts, detail::Name(name), detail::Name(name),
        network, value);
  }
  result<List<BridgeFdbEntry>> try_bridge_fdb_entries(Text instance_name, std::uint16_t segment,
                                                      std::uint32_t selector) const noexcept {
    return detail::ReadList<BridgeFdbEntry>("VDRZAX_GetBridgeFdbEntries",
                                            VDRZAX_GetBridgeFdbEntries, detail::Name(instance_name),
                                            segment, selector);
  }
  result<List<BridgeFdbEntry>> try_fetch_bridge_fdb_entries(Text instance_name,
                                                            std::uint16_t segment,
                                                            std::uint32_t selector) const noexcept {
    return detail::Fetch<BridgeFdbEntry, detail::HeaderAfterFailure::Callers>(
        "VDRZAXGetBridgeFdbEntries", VDRZAXGetBridgeFdbEntries, detail::Name(instance_name),
        segment, selector);
  }
  result<List<BridgeCluster>> try_bridge_clusters(Text name = {}) const noexcept {
    return detail::ReadList<BridgeCluster>("VDRZAX_GetBridgeClusters", VDRZAX_GetBridgeClusters,
                                           detail::OptionalName(name));
  }
  result<List<BridgeCluster>> try_fetch_bridge_clusters(Text name = {}) const noexcept {
    return detail::Fetch<BridgeCluster, detail::HeaderAfterFailure::Freed>(
        "VDRZAXGetBridgeClusters", VDRZAXGetBridgeClusters, detail::OptionalName(name));
  }
  result<List<BridgeClusterNode>> try_bridge_cluster_nodes(Text name = {}) const noexcept {
    return detail::ReadList<BridgeClusterNode>(
        "VDRZAX_GetBridgeClusterNodes", VDRZAX_GetBridgeClusterNodes, detail::OptionalName(name));
  }
  result<List<BridgeClusterNode>> try_fetch_bridge_cluster_nodes(Text name = {}) const noexcept {
    return detail::Fetch<BridgeClusterNode, detail::HeaderAfterFailure::Freed>(
        "VDRZAXGetBridgeClusterNodes", VDRZAXGetBridgeClusterNodes, detail::OptionalName(name));
  }
  result<List<BridgeEndpoint>> try_bridge_endpoints(Text name = {}) const noexcept {
    return detail::ReadList<BridgeEndpoint>("VDRZAX_GetBridgeEndpoints", VDRZAX_GetBridgeEndpoints,
                                            detail::OptionalName(name));
  }
  result<List<BridgeEndpoint>> try_fetch_bridge_endpoints(Text name = {}) const noexcept {
    return detail::Fetch<BridgeEndpoint, detail::HeaderAfterFailure::Freed>(
        "VDRZAXGetBridgeEndpoints", VDRZAXGetBridgeEndpoints, detail::OptionalName(name));
  }
  // Reserves 223 MB while it reads, whatever the kernel returns.
  result<List<BridgeBfdSession>> try_bridge_bfd_sessions(Text name = {}) const noexcept {
    return detail::ReadList<BridgeBfdSession>(
        "VDRZAX_GetBridgeBFDSessions", VDRZAX_GetBridgeBFDSessions, detail::OptionalName(name));
  }
  result<List<BridgeBfdSession>> try_fetch_bridge_bfd_sessions(Text name = {}) const noexcept {
    return detail::Fetch<BridgeBfdSession, detail::HeaderAfterFailure::Freed>(
        "VDRZAXGetBridgeBFDSessions", VDRZAXGetBridgeBFDSessions, detail::OptionalName(name));
  }
  result<Bytes<146>> try_be_stats(Text lif_name) const noexcept {
    return detail::Array<146>("VDRZAX_GetBeStats", VDRZAX_GetBeStats, detail::Name(lif_name));
  }
  result<Bytes<229>> try_be_status(Text lif_name) const noexcept {
    return detail::Array<229>("VDRZAX_GetBeStatus", VDRZAX_GetBeStatus, detail::Name(lif_name));
  }
  // With room for `most` endpoints; those beyond are not given.
  result<RawBridgeEndpoints> try_be_all(std::uint32_t most = 28672) const noexcept {
    constexpr std::uint32_t kSize = 235;
    constexpr std::uint32_t kMost = 0xFFFFFFFF / kSize;
    if (most > kMost) return Failure{"VDRZAX_GetBeAll", ENAMETOOLONG, Refusal::TooLong};
    RawBridgeEndpoints endpoints(std::calloc(most, kSize), most);
    if (most > 0 && endpoints.empty()) return Failure{"VDRZAX_GetBeAll", ENOMEM};
    std::uint32_t count = 0;
    const Failure failure =
        detail::Call("VDRZAX_GetBeAll", VDRZAX_GetBeAll, endpoints.data(), most * kSize, &count);
    if (failure.code != 0) return failure;
    endpoints.shrink(count);
    return endpoints;
  }
  result<void> try_set_bridge_fdb_entry(Text instance_name,
                                        const BridgeFdbSettings& settings) const noexcept {
    return detail::Command("VDRZAX_BridgeSetFdbEntry", VDRZAX_BridgeSetFdbEntry,
                           detail::Name(instance_name), detail::Optional<17>(settings.mac_text),
                           settings.segment, settings.selector, settings.value, settings.flag);
  }
  result<void> try_clear_bridge_fdb_table(Text instance_name, std::uint32_t segment,
                                          std::uint32_t selector) const noexcept {
    return detail::Command("VDRZAX_BridgeClearFdbTable", VDRZAX_BridgeClearFdbTable,
                           detail::Name(instance_name), segment, selector);
  }
  // Sends `command_code` whatever it is.
  result<void> try_set_bridge_config(Text instance_name, std::uint32_t command_code,
                                     std::uint32_t value) const noexcept {
    return detail::Command("VDRZAX_BridgeSetConfig", VDRZAX_BridgeSetConfig,
                           detail::Name(instance_name), command_code, value);
  }
  result<void> try_add_bridge(Text instance_name, std::uint32_t value) const noexcept {
    return detail::Command("VDRZAX_BridgeAdd", VDRZAX_BridgeAdd, detail::Name(instance_name),
                           value);
  }
  result<void> try_delete_bridge(Text instance_name, std::uint32_t value) const noexcept {
    return detail::Command("VDRZAX_BridgeDel", VDRZAX_BridgeDel, detail::Name(instance_name),
                           value);
  }
  result<void> try_set_bridge_ha_admin_state(Text instance_name,
                                             std::uint32_t state) const noexcept {
    return detail::Command("VDRZAX_BridgeSetHAAdminState", VDRZAX_BridgeSetHAAdminState,
                           detail::Name(instance_name), state);
  }
  result<void> try_enable_bridge(Text instance_name, std::uint8_t value) const noexcept {
    return detail::Command("VDRZAX_BridgeEnable", VDRZAX_BridgeEnable, detail::Name(instance_name),
                           value);
  }
  result<void> try_disable_bridge(Text instance_name, std::uint8_t value) const noexcept {
    return detail::Command("VDRZAX_BridgeDisable", VDRZAX_BridgeDisable,
                           detail::Name(instance_name), value);
  }
  // Creates a cluster, or deletes it.
  result<void> try_set_bridge_cluster(Text name, bool create = true) const noexcept {
    return detail::Command("VDRZAX_BridgeClusterSet", VDRZAX_BridgeClusterSet, detail::Name(name),
                           create);
  }
  // Adds a node, which needs an address, or removes it.
  result<void> try_set_bridge_cluster_node(Text name, Text node_name, const std::optional<Mac>& mac,
                                           bool add = true) const noexcept {
    return detail::Command("VDRZAX_BridgeClusterNodeSet", VDRZAX_BridgeClusterNodeSet,
                           detail::Name(name), detail::Name(node_name),
                           detail::OptionalAddress(mac, add), add);
  }
  result<void> try_flush_bridge_cluster(Text name, bool all = false) const noexcept {
    return detail::Command("VDRZAX_FlushBridgeCluster", VDRZAX_FlushBridgeCluster,
                           detail::OptionalName(name), all);
  }
  result<void> try_set_bridge_cluster_debug(Text name, std::uint8_t level) const noexcept {
    return detail::Command("VDRZAX_SetBridgeClusterDebug", VDRZAX_SetBridgeClusterDebug,
                           detail::OptionalName(name), level);
  }
  result<void> try_set_bridge_cluster_bfd_ha_profile(Text name, std::uint8_t profile,
                                                     std::uint32_t value1,
                                                     std::uint32_t value2) const noexcept {
    return detail::Command("VDRZAX_BridgeClusterBfdHAProfileSet",
                           VDRZAX_BridgeClusterBfdHAProfileSet, detail::Name(name), profile, value1,
                           value2);
  }
  // Sets the one of this host, or clears it.
  result<void> try_set_local_transport_node(const LocalTransportNodeSettings& settings,
                                            bool set = true) const noexcept {
    return detail::Command("VDRZAX_BridgeLocalTransportNodeSet", VDRZAX_BridgeLocalTransportNodeSet,
                           detail::Name(settings.name1), detail::Name(settings.name2),
                           detail::Required<15>(settings.name3), settings.value,
                           settings.bytes.data(), set);
  }
  result<Bytes<2048>> try_local_transport_node(std::uint32_t selector) const noexcept {
    Bytes<2048> node{};
    const Failure failure = detail::Call("VDRZAX_BridgeGetLocalTransportNode",
                                         VDRZAX_BridgeGetLocalTransportNode, node.data(), selector);
    if (failure.code != 0) return failure;
    return node;
  }
  // `name2` has at most 15 characters.
  result<void> try_plumb_bfd_port_connection(Text port_name, Text name2,
                                             const std::optional<Mac>& mac = {}) const noexcept {
    return detail::Command("VDRZAX_PlumbBFDPortConnection", VDRZAX_PlumbBFDPortConnection,
                           detail::Name(port_name), detail::Required<15>(name2),
                           detail::OptionalAddress(mac));
  }
  result<void> try_unplumb_bfd_port_connection(Text port_name) const noexcept {
    return detail::Command("VDRZAX_UnPlumbBFDPortConnection", VDRZAX_UnPlumbBFDPortConnection,
                           detail::Name(port_name));
  }
  result<Buffer> try_bfd_port_connections() const noexcept {
    return detail::Raw<131072>("VDRZAX_GetBFDPortConnections", VDRZAX_GetBFDPortConnections);
  }

#ifdef __cpp_exceptions
  void set_bridge_lif(Text instance_name, Text lif_name, const BridgeLifSettings& settings = {},
                      bool set = true) const {
    return try_set_bridge_lif(instance_name, lif_name, settings, set).value();
  }
  void add_bridge_endpoint(Text lif_name, Text endpoint_name,
                           const BridgeEndpointSettings& settings = {}) const {
    return try_add_bridge_endpoint(lif_name, endpoint_name, settings).value();
  }
  void delete_bridge_endpoint(Text lif_name, Text endpoint_name) const {
    return try_delete_bridge_endpoint(lif_name, endpoint_name).value();
  }
  void flush_bridge_endpoint(bool all) const { return try_flush_bridge_endpoint(all).value(); }
  void set_bridge_rep_mode(Text instance_name, std::uint32_t mode) const {
    return try_set_bridge_rep_mode(instance_name, mode).value();
  }
  Owned<BridgeInstance> bridge_instance(Text instance_name) const {
    return try_bridge_instance(instance_name).value();
  }
  Owned<BridgeInstance> find_bridge_instance(Text instance_name) const {
    return try_find_bridge_instance(instance_name).value();
  }
  List<BridgeInstance> bridge_instances() const { return try_bridge_instances().value(); }
  List<BridgeInstance> fetch_bridge_instances() const {
    return try_fetch_bridge_instances().value();
  }
  List<BridgeNetwork> bridge_networks(Text name) const { return try_bridge_networks(name).value(); }
  List<BridgeNetwork> fetch_bridge_networks(Text name) const {
    return try_fetch_bridge_networks(name).value();
  }
  List<BridgePort> bridge_ports(Text name, std::uint16_t network, std::uint32_t value) const {
    return try_bridge_ports(name, network, value).value();
  }
  List<BridgePort> fetch_bridge_ports(Text name, std::uint16_t network, std::uint32_t value) const {
    return try_fetch_bridge_ports(name, network, value).value();
  }
  List<BridgeFdbEntry> bridge_fdb_entries(Text instance_name, std::uint16_t segment,
                                          std::uint32_t selector) const {
    return try_bridge_fdb_entries(instance_name, segment, selector).value();
  }
  List<BridgeFdbEntry> fetch_bridge_fdb_entries(Text instance_name, std::uint16_t segment,
                                                std::uint32_t selector) const {
    return try_fetch_bridge_fdb_entries(instance_name, segment, selector).value();
  }
  List<BridgeCluster> bridge_clusters(Text name = {}) const {
    return try_bridge_clusters(name).value();
  }
  List<BridgeCluster> fetch_bridge_clusters(Text name = {}) const {
    return try_fetch_bridge_clusters(name).value();
  }
  List<BridgeClusterNode> bridge_cluster_nodes(Text name = {}) const {
    return try_bridge_cluster_nodes(name).value();
  }
  List<BridgeClusterNode> fetch_bridge_cluster_nodes(Text name = {}) const {
    return try_fetch_bridge_cluster_nodes(name).value();
  }
  List<BridgeEndpoint> bridge_endpoints(Text name = {}) const {
    return try_bridge_endpoints(name).value();
  }
  List<BridgeEndpoint> fetch_bridge_endpoints(Text name = {}) const {
    return try_fetch_bridge_endpoints(name).value();
  }
  List<BridgeBfdSession> bridge_bfd_sessions(Text name = {}) const {
    return try_bridge_bfd_sessions(name).value();
  }
  List<BridgeBfdSession> fetch_bridge_bfd_sessions(Text name = {}) const {
    return try_fetch_bridge_bfd_sessions(name).value();
  }
  Bytes<146> be_stats(Text lif_name) const { return try_be_stats(lif_name).value(); }
  Bytes<229> be_status(Text lif_name) const { return try_be_status(lif_name).value(); }
  RawBridgeEndpoints be_all(std::uint32_t most = 28672) const { return try_be_all(most).value(); }
  void set_bridge_fdb_entry(Text instance_name, const BridgeFdbSettings& settings) const {
    return try_set_bridge_fdb_entry(instance_name, settings).value();
  }
  void clear_bridge_fdb_table(Text instance_name, std::uint32_t segment,
                              std::uint32_t selector) const {
    return try_clear_bridge_fdb_table(instance_name, segment, selector).value();
  }
  void set_bridge_config(Text instance_name, std::uint32_t command_code,
                         std::uint32_t value) const {
    return try_set_bridge_config(instance_name, command_code, value).value();
  }
  void add_bridge(Text instance_name, std::uint32_t value) const {
    return try_add_bridge(instance_name, value).value();
  }
  void delete_bridge(Text instance_name, std::uint32_t value) const {
    return try_delete_bridge(instance_name, value).value();
  }
  void set_bridge_ha_admin_state(Text instance_name, std::uint32_t state) const {
    return try_set_bridge_ha_admin_state(instance_name, state).value();
  }
  void enable_bridge(Text instance_name, std::uint8_t value) const {
    return try_enable_bridge(instance_name, value).value();
  }
  void disable_bridge(Text instance_name, std::uint8_t value) const {
    return try_disable_bridge(instance_name, value).value();
  }
  void set_bridge_cluster(Text name, bool create = true) const {
    return try_set_bridge_cluster(name, create).value();
  }
  void set_bridge_cluster_node(Text name, Text node_name, const std::optional<Mac>& mac,
                               bool add = true) const {
    return try_set_bridge_cluster_node(name, node_name, mac, add).value();
  }
  void flush_bridge_cluster(Text name, bool all = false) const {
    return try_flush_bridge_cluster(name, all).value();
  }
  void set_bridge_cluster_debug(Text name, std::uint8_t level) const {
    return try_set_bridge_cluster_debug(name, level).value();
  }
  void set_bridge_cluster_bfd_ha_profile(Text name, std::uint8_t profile, std::uint32_t value1,
                                         std::uint32_t value2) const {
    return try_set_bridge_cluster_bfd_ha_profile(name, profile, value1, value2).value();
  }
  void set_local_transport_node(const LocalTransportNodeSettings& settings, bool set = true) const {
    return try_set_local_transport_node(settings, set).value();
  }
  Bytes<2048> local_transport_node(std::uint32_t selector) const {
    return try_local_transport_node(selector).value();
  }
  void plumb_bfd_port_connection(Text port_name, Text name2,
                                 const std::optional<Mac>& mac = {}) const {
    return try_plumb_bfd_port_connection(port_name, name2, mac).value();
  }
  void unplumb_bfd_port_connection(Text port_name) const {
    return try_unplumb_bfd_port_connection(port_name).value();
  }
  Buffer bfd_port_connections() const { return try_bfd_port_connections().value(); }
#endif
};

}  // namespace v1
}  // namespace vdrzax
