#pragma once

#include <vdrzax/instance.h>

#include <vdrzax/cxx/call.hpp>

// Router instances, their counters and control plane, the settings of the datapath, connections.
namespace vdrzax {
inline namespace v1 {

// A router instance.
class Instance : public View<InstanceRecord> {
 public:
  using View::View;

  std::string_view name() const noexcept { return text(raw().name); }
  std::uint32_t word64() const noexcept { return raw().word64; }
  std::uint32_t word68() const noexcept { return raw().word68; }
  std::uint8_t byte72() const noexcept { return raw().byte72; }
  std::string_view text73() const noexcept { return text(raw().text73); }
  std::string_view text329() const noexcept { return text(raw().text329); }
  Bytes<6> address393() const noexcept { return copy<Bytes<6>>(offsetof(Record, address393)); }
  std::uint32_t word399() const noexcept { return raw().word399; }
  std::uint32_t word403() const noexcept { return raw().word403; }
  std::uint32_t word407() const noexcept { return raw().word407; }
  std::uint8_t byte411() const noexcept { return raw().byte411; }
  std::uint16_t half412() const noexcept { return raw().half412; }
  std::uint8_t byte416() const noexcept { return raw().byte416; }
  std::uint8_t byte417() const noexcept { return raw().byte417; }
  Bytes<13> bytes418() const noexcept { return copy<Bytes<13>>(offsetof(Record, bytes418)); }
  std::array<std::uint32_t, 4> words431() const noexcept {
    return copy<std::array<std::uint32_t, 4>>(offsetof(Record, words431));
  }
  Bytes<6> address447() const noexcept { return copy<Bytes<6>>(offsetof(Record, address447)); }
  std::uint8_t byte453() const noexcept { return raw().byte453; }
  std::uint16_t half454() const noexcept { return raw().half454; }
  std::uint8_t byte456() const noexcept { return raw().byte456; }
  std::string_view text457() const noexcept { return text(raw().text457); }
  std::uint16_t half521() const noexcept { return raw().half521; }
  Bytes<40> bytes523() const noexcept { return copy<Bytes<40>>(offsetof(Record, bytes523)); }
  std::uint32_t word563() const noexcept { return raw().word563; }
  std::uint8_t byte567() const noexcept { return raw().byte567; }
  std::uint32_t word568() const noexcept { return raw().word568; }
  std::uint32_t word572() const noexcept { return raw().word572; }
  std::uint8_t byte576() const noexcept { return raw().byte576; }

  static void release(InstanceRecord* record) noexcept { VDRZAX_ReleaseInstance(record); }
  static void release(RecordList* list) noexcept { VDRZAX_ReleaseInstances(list); }
};

// Counters. `type` tells which slots hold one; all others are zero.
class Stats : public View<StatsRecord> {
 public:
  using View::View;

  std::uint32_t type() const noexcept { return raw().type; }
  std::array<std::uint64_t, 106> slots() const noexcept {
    return copy<std::array<std::uint64_t, 106>>(offsetof(Record, slots));
  }

  static void release(StatsRecord* record) noexcept { VDRZAX_ReleaseStats(record); }
};

// One of the five parts of a control-plane sync state.
class CpSyncPart : public View<CPSyncStateEntry> {
 public:
  using View::View;

  std::uint64_t qword0() const noexcept { return raw().qword0; }
  std::array<std::uint32_t, 5> words8() const noexcept {
    return copy<std::array<std::uint32_t, 5>>(offsetof(Record, words8));
  }
  std::array<std::uint64_t, 8> qwords28() const noexcept {
    return copy<std::array<std::uint64_t, 8>>(offsetof(Record, qwords28));
  }
  std::array<std::uint64_t, 23> qwords100() const noexcept {
    return copy<std::array<std::uint64_t, 23>>(offsetof(Record, qwords100));
  }
};

// The control-plane sync state of an instance.
class CpSyncState : public View<CPSyncStateRecord> {
 public:
  using View::View;

  Range<CpSyncPart> entries() const noexcept { return {raw().entries, 5}; }

  static void release(CPSyncStateRecord* record) noexcept { std::free(record); }
};

// What a router instance is set to: numbers of the kernel's, and a text of at most 18 characters.
struct InstanceSettings {
  std::uint32_t second = 0;
  Text text = {};
  std::uint32_t fourth = 0;
  std::uint8_t flag = 0;
};

// What a connection is plumbed with. `second` is required, of at most 15 characters; `fourth` takes 17,
// `fifth` 31 and `sixth` 255. The third argument of the C function is ignored and has no place here.
struct ConnectionSettings {
  Text second = "";
  Text fourth = {};
  Text fifth = {};
  Text sixth = {};
  std::uint32_t seventh = 0;
};

class InstanceCalls {
 public:
  result<Owned<Instance>> try_instance(Text name) const noexcept {
    return detail::Record<Instance>("VDRZAX_GetInstance", VDRZAX_GetInstance, detail::Name(name));
  }
  result<Owned<Instance>> try_find_instance(Text name) const noexcept {
    return detail::Found(try_instance(name));
  }
  // All instances, or the one that is named. `filter` is sent beside the name.
  result<List<Instance>> try_instances(Text name = {}, std::uint8_t filter = 1) const noexcept {
    return detail::ReadList<Instance>("VDRZAX_GetInstances", VDRZAX_GetInstances,
                                      detail::OptionalName(name),
                                      name.has_value() ? filter : std::uint8_t{0});
  }
  result<void> try_set_instance(Text name, const InstanceSettings& settings = {}) const noexcept {
    return detail::Command("VDRZAX_SetVdrInstance", VDRZAX_SetVdrInstance, detail::Name(name),
                           settings.second, detail::Optional<18>(settings.text), settings.fourth,
                           settings.flag);
  }
  result<void> try_delete_instance(Text name) const noexcept {
    return detail::Command("VDRZAX_DelVdrInstance", VDRZAX_DelVdrInstance, detail::Name(name));
  }
  result<void> try_set_instance_tunables(Text name, Text tunables,
                                         std::uint32_t value) const noexcept {
    return detail::Command("VDRZAX_SetVdrInstanceTunables", VDRZAX_SetVdrInstanceTunables,
                           detail::Name(name), detail::Name(tunables), value);
  }
  result<Owned<Stats>> try_instance_cp_stats(Text name) const noexcept {
    return detail::Record<Stats>("VDRZAX_GetVdrInstanceCPStats", VDRZAX_GetVdrInstanceCPStats,
                                 detail::Name(name));
  }
  result<Owned<Stats>> try_find_instance_cp_stats(Text name) const noexcept {
    return detail::Found(try_instance_cp_stats(name));
  }
  result<void> try_reset_instance_cp_stats(Text name) const noexcept {
    return detail::Command("VDRZAX_ResetVdrInstanceCPStats", VDRZAX_ResetVdrInstanceCPStats,
                           detail::Name(name));
  }
  // Gathered afresh; `lif_stats_cached` gives what the kernel has.
  result<Owned<Stats>> try_lif_stats(Text instance_name, Text interface_name) const noexcept {
    return detail::Record<Stats>("VDRZAX_GetLifStats", VDRZAX_GetLifStats,
                                 detail::Name(instance_name), detail::Name(interface_name));
  }
  result<Owned<Stats>> try_find_lif_stats(Text instance_name, Text interface_name) const noexcept {
    return detail::Found(try_lif_stats(instance_name, interface_name));
  }
  result<Owned<Stats>> try_lif_stats_cached(Text instance_name,
                                            Text interface_name) const noexcept {
    return detail::Record<Stats>("VDRZAX_GetLifStatsCached", VDRZAX_GetLifStatsCached,
                                 detail::Name(instance_name), detail::Name(interface_name));
  }
  result<Owned<Stats>> try_find_lif_stats_cached(Text instance_name,
                                                 Text interface_name) const noexcept {
    return detail::Found(try_lif_stats_cached(instance_name, interface_name));
  }
  result<void> try_reset_lif_stats(Text instance_name, Text interface_name) const noexcept {
    return detail::Command("VDRZAX_ResetLifStats", VDRZAX_ResetLifStats,
                           detail::Name(instance_name), detail::Name(interface_name));
  }
  // The counters of the datapath as a whole.
  result<Owned<Stats>> try_di_stats() const noexcept {
    return detail::Record<Stats>("VDRZAX_GetVdrDiStats", VDRZAX_GetVdrDiStats);
  }
  result<void> try_reset_di_stats() const noexcept {
    return detail::Command("VDRZAX_ResetVdrDiStats", VDRZAX_ResetVdrDiStats);
  }
  result<Owned<CpSyncState>> try_instance_cp_sync_state(Text name) const noexcept {
    return detail::Record<CpSyncState>("VDRZAX_GetVdrInstanceCPSyncState",
                                       VDRZAX_GetVdrInstanceCPSyncState, detail::Name(name));
  }
  result<Owned<CpSyncState>> try_find_instance_cp_sync_state(Text name) const noexcept {
    return detail::Found(try_instance_cp_sync_state(name));
  }
  result<void> try_set_instance_cp_sync_state(Text name, std::uint32_t state) const noexcept {
    return detail::Command("VDRZAX_SetVdrInstanceCPSyncState", VDRZAX_SetVdrInstanceCPSyncState,
                           detail::Name(name), state);
  }
  result<void> try_activate_cp(std::uint32_t value) const noexcept {
    return detail::Command("VDRZAX_CPActivate", VDRZAX_CPActivate, value);
  }
  result<void> try_set_cp_ip(Text name, std::uint32_t address) const noexcept {
    return detail::Command("VDRZAX_SetCPIp", VDRZAX_SetCPIp, detail::Name(name), address);
  }
  result<std::uint32_t> try_log_level() const noexcept { return detail::LogLevel(); }
  result<std::uint32_t> try_extended_log_level() const noexcept {
    return detail::Number("VDRZAX_GetExtendedLogLevel", VDRZAX_GetExtendedLogLevel);
  }
  result<std::uint32_t> try_stats_level() const noexcept {
    return detail::Number("VDRZAX_GetStatsLevel", VDRZAX_GetStatsLevel);
  }
  result<std::uint32_t> try_tx_disp_queue_size() const noexcept {
    return detail::Number("VDRZAX_GetTxDispQueueSize", VDRZAX_GetTxDispQueueSize);
  }
  result<void> try_set_log_level(std::uint32_t level) const noexcept {
    return detail::Command("VDRZAX_SetLogLevel", VDRZAX_SetLogLevel, level);
  }
  result<void> try_set_extended_log_level(std::uint32_t level) const noexcept {
    return detail::Command("VDRZAX_SetExtendedLogLevel", VDRZAX_SetExtendedLogLevel, level);
  }
  result<void> try_set_stats_level(std::uint32_t level) const noexcept {
    return detail::Command("VDRZAX_SetStatsLevel", VDRZAX_SetStatsLevel, level);
  }
  result<void> try_set_tx_disp_queue_size(std::uint32_t size) const noexcept {
    return detail::Command("VDRZAX_SetTxDispQueueSize", VDRZAX_SetTxDispQueueSize, size);
  }
  // Tells the datapath that its kernel module is about to be unloaded.
  result<void> try_pre_unload() const noexcept {
    return detail::Command("VDRZAX_PreUnload", VDRZAX_PreUnload);
  }
  result<void> try_plumb_connection(Text connection_name,
                                    const ConnectionSettings& settings = {}) const noexcept {
    return detail::Command("VDRZAX_PlumbVdrConnection", VDRZAX_PlumbVdrConnection,
                           detail::Name(connection_name), detail::Required<15>(settings.second),
                           std::uint64_t{0}, detail::Optional<17>(settings.fourth),
                           detail::Optional<31>(settings.fifth),
                           detail::Optional<255>(settings.sixth), settings.seventh);
  }
  result<void> try_unplumb_connection(Text connection_name) const noexcept {
    return detail::Command("VDRZAX_UnPlumbVdrConnection", VDRZAX_UnPlumbVdrConnection,
                           detail::Name(connection_name));
  }
  result<Buffer> try_connections() const noexcept {
    return detail::Raw<131072>("VDRZAX_GetConnections", VDRZAX_GetConnections);
  }
  result<Bytes<152>> try_connection(Text connection_name) const noexcept {
    return detail::Array<152>("VDRZAX_GetConnection", VDRZAX_GetConnection,
                              detail::Name(connection_name));
  }
  // The virtual MAC address of a connection.
  result<Mac> try_vmac(Text connection_name) const noexcept {
    return detail::Array<6>("VDRZAX_GetVMAC", VDRZAX_GetVMAC, detail::Name(connection_name));
  }
  // Whether the deletion of connections is pending, as the kernel says it.
  result<std::uint32_t> try_check_conn_deletion() const noexcept {
    return detail::Number("VDRZAX_VDRDevCheckConnDeletion", VDRZAX_VDRDevCheckConnDeletion);
  }

#ifdef __cpp_exceptions
  Owned<Instance> instance(Text name) const { return try_instance(name).value(); }
  Owned<Instance> find_instance(Text name) const { return try_find_instance(name).value(); }
  List<Instance> instances(Text name = {}, std::uint8_t filter = 1) const {
    return try_instances(name, filter).value();
  }
  void set_instance(Text name, const InstanceSettings& settings = {}) const {
    return try_set_instance(name, settings).value();
  }
  void delete_instance(Text name) const { return try_delete_instance(name).value(); }
  void set_instance_tunables(Text name, Text tunables, std::uint32_t value) const {
    return try_set_instance_tunables(name, tunables, value).value();
  }
  Owned<Stats> instance_cp_stats(Text name) const { return try_instance_cp_stats(name).value(); }
  Owned<Stats> find_instance_cp_stats(Text name) const {
    return try_find_instance_cp_stats(name).value();
  }
  void reset_instance_cp_stats(Text name) const {
    return try_reset_instance_cp_stats(name).value();
  }
  Owned<Stats> lif_stats(Text instance_name, Text interface_name) const {
    return try_lif_stats(instance_name, interface_name).value();
  }
  Owned<Stats> find_lif_stats(Text instance_name, Text interface_name) const {
    return try_find_lif_stats(instance_name, interface_name).value();
  }
  Owned<Stats> lif_stats_cached(Text instance_name, Text interface_name) const {
    return try_lif_stats_cached(instance_name, interface_name).value();
  }
  Owned<Stats> find_lif_stats_cached(Text instance_name, Text interface_name) const {
    return try_find_lif_stats_cached(instance_name, interface_name).value();
  }
  void reset_lif_stats(Text instance_name, Text interface_name) const {
    return try_reset_lif_stats(instance_name, interface_name).value();
  }
  Owned<Stats> di_stats() const { return try_di_stats().value(); }
  void reset_di_stats() const { return try_reset_di_stats().value(); }
  Owned<CpSyncState> instance_cp_sync_state(Text name) const {
    return try_instance_cp_sync_state(name).value();
  }
  Owned<CpSyncState> find_instance_cp_sync_state(Text name) const {
    return try_find_instance_cp_sync_state(name).value();
  }
  void set_instance_cp_sync_state(Text name, std::uint32_t state) const {
    return try_set_instance_cp_sync_state(name, state).value();
  }
  void activate_cp(std::uint32_t value) const { return try_activate_cp(value).value(); }
  void set_cp_ip(Text name, std::uint32_t address) const {
    return try_set_cp_ip(name, address).value();
  }
  std::uint32_t log_level() const { return try_log_level().value(); }
  std::uint32_t extended_log_level() const { return try_extended_log_level().value(); }
  std::uint32_t stats_level() const { return try_stats_level().value(); }
  std::uint32_t tx_disp_queue_size() const { return try_tx_disp_queue_size().value(); }
  void set_log_level(std::uint32_t level) const { return try_set_log_level(level).value(); }
  void set_extended_log_level(std::uint32_t level) const {
    return try_set_extended_log_level(level).value();
  }
  void set_stats_level(std::uint32_t level) const { return try_set_stats_level(level).value(); }
  void set_tx_disp_queue_size(std::uint32_t size) const {
    return try_set_tx_disp_queue_size(size).value();
  }
  void pre_unload() const { return try_pre_unload().value(); }
  void plumb_connection(Text connection_name, const ConnectionSettings& settings = {}) const {
    return try_plumb_connection(connection_name, settings).value();
  }
  void unplumb_connection(Text connection_name) const {
    return try_unplumb_connection(connection_name).value();
  }
  Buffer connections() const { return try_connections().value(); }
  Bytes<152> connection(Text connection_name) const {
    return try_connection(connection_name).value();
  }
  Mac vmac(Text connection_name) const { return try_vmac(connection_name).value(); }
  std::uint32_t check_conn_deletion() const { return try_check_conn_deletion().value(); }
#endif
};

}  // namespace v1
}  // namespace vdrzax
