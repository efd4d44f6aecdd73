#include "cxx/calls.h"

namespace cxx {

Rows InstanceCalls() {
  return {
      {"VDRZAX_GetInstance",
       [] {
         InstanceRecord* out = nullptr;
         return Done(VDRZAX_GetInstance("text-1", &out), out, VDRZAX_ReleaseInstance);
       },
       FACE(instance, "text-1"), sizeof(InstanceRecord)},
      {"VDRZAX_GetInstance",
       [] {
         InstanceRecord* out = nullptr;
         return Done(VDRZAX_GetInstance("text-1", &out), out, VDRZAX_ReleaseInstance);
       },
       FACE(find_instance, "text-1"), sizeof(InstanceRecord)},
      {"VDRZAX_GetInstances",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetInstances("text-1", 0x21, &out), out, VDRZAX_ReleaseInstances);
       },
       FACE(instances, "text-1", 0x21), 0},
      {"VDRZAX_SetVdrInstance",
       [] { return VDRZAX_SetVdrInstance("text-1", 0x21223340U, "text-3", 0x41223340U, 0x51); },
       FACE(set_instance, "text-1",
            {.second = 0x21223340U, .text = "text-3", .fourth = 0x41223340U, .flag = 0x51}),
       0},
      {"VDRZAX_DelVdrInstance", [] { return VDRZAX_DelVdrInstance("text-1"); },
       FACE(delete_instance, "text-1"), 0},
      {"VDRZAX_SetVdrInstanceTunables",
       [] { return VDRZAX_SetVdrInstanceTunables("text-1", "text-2", 0x31223340U); },
       FACE(set_instance_tunables, "text-1", "text-2", 0x31223340U), 0},
      {"VDRZAX_GetVdrInstanceCPStats",
       [] {
         StatsRecord* out = nullptr;
         return Done(VDRZAX_GetVdrInstanceCPStats("text-1", &out), out, VDRZAX_ReleaseStats);
       },
       FACE(instance_cp_stats, "text-1"), sizeof(StatsRecord)},
      {"VDRZAX_GetVdrInstanceCPStats",
       [] {
         StatsRecord* out = nullptr;
         return Done(VDRZAX_GetVdrInstanceCPStats("text-1", &out), out, VDRZAX_ReleaseStats);
       },
       FACE(find_instance_cp_stats, "text-1"), sizeof(StatsRecord)},
      {"VDRZAX_ResetVdrInstanceCPStats", [] { return VDRZAX_ResetVdrInstanceCPStats("text-1"); },
       FACE(reset_instance_cp_stats, "text-1"), 0},
      {"VDRZAX_GetLifStats",
       [] {
         StatsRecord* out = nullptr;
         return Done(VDRZAX_GetLifStats("text-1", "text-2", &out), out, VDRZAX_ReleaseStats);
       },
       FACE(lif_stats, "text-1", "text-2"), sizeof(StatsRecord)},
      {"VDRZAX_GetLifStats",
       [] {
         StatsRecord* out = nullptr;
         return Done(VDRZAX_GetLifStats("text-1", "text-2", &out), out, VDRZAX_ReleaseStats);
       },
       FACE(find_lif_stats, "text-1", "text-2"), sizeof(StatsRecord)},
      {"VDRZAX_GetLifStatsCached",
       [] {
         StatsRecord* out = nullptr;
         return Done(VDRZAX_GetLifStatsCached("text-1", "text-2", &out), out, VDRZAX_ReleaseStats);
       },
       FACE(lif_stats_cached, "text-1", "text-2"), sizeof(StatsRecord)},
      {"VDRZAX_GetLifStatsCached",
       [] {
         StatsRecord* out = nullptr;
         return Done(VDRZAX_GetLifStatsCached("text-1", "text-2", &out), out, VDRZAX_ReleaseStats);
       },
       FACE(find_lif_stats_cached, "text-1", "text-2"), sizeof(StatsRecord)},
      {"VDRZAX_ResetLifStats", [] { return VDRZAX_ResetLifStats("text-1", "text-2"); },
       FACE(reset_lif_stats, "text-1", "text-2"), 0},
      {"VDRZAX_GetVdrDiStats",
       [] {
         StatsRecord* out = nullptr;
         return Done(VDRZAX_GetVdrDiStats(&out), out, VDRZAX_ReleaseStats);
       },
       FACE(di_stats), sizeof(StatsRecord)},
      {"VDRZAX_ResetVdrDiStats", [] { return VDRZAX_ResetVdrDiStats(); }, FACE(reset_di_stats), 0},
      {"VDRZAX_GetVdrInstanceCPSyncState",
       [] {
         CPSyncStateRecord* out = nullptr;
         return Done(VDRZAX_GetVdrInstanceCPSyncState("text-1", &out), out, std::free);
       },
       FACE(instance_cp_sync_state, "text-1"), sizeof(CPSyncStateRecord)},
      {"VDRZAX_GetVdrInstanceCPSyncState",
       [] {
         CPSyncStateRecord* out = nullptr;
         return Done(VDRZAX_GetVdrInstanceCPSyncState("text-1", &out), out, std::free);
       },
       FACE(find_instance_cp_sync_state, "text-1"), sizeof(CPSyncStateRecord)},
      {"VDRZAX_SetVdrInstanceCPSyncState",
       [] { return VDRZAX_SetVdrInstanceCPSyncState("text-1", 0x21223340U); },
       FACE(set_instance_cp_sync_state, "text-1", 0x21223340U), 0},
      {"VDRZAX_CPActivate", [] { return VDRZAX_CPActivate(0x11223340U); },
       FACE(activate_cp, 0x11223340U), 0},
      {"VDRZAX_SetCPIp", [] { return VDRZAX_SetCPIp("text-1", 0x21223340U); },
       FACE(set_cp_ip, "text-1", 0x21223340U), 0},
      {"VDRZAX_GetLogLevel",
       [] {
         std::uint32_t number = 0;
         return VDRZAX_GetLogLevel(&number);
       },
       FACE(log_level), 4},
      {"VDRZAX_GetExtendedLogLevel",
       [] {
         std::uint32_t number = 0;
         return VDRZAX_GetExtendedLogLevel(&number);
       },
       FACE(extended_log_level), 4},
      {"VDRZAX_GetStatsLevel",
       [] {
         std::uint32_t number = 0;
         return VDRZAX_GetStatsLevel(&number);
       },
       FACE(stats_level), 4},
      {"VDRZAX_GetTxDispQueueSize",
       [] {
         std::uint32_t number = 0;
         return VDRZAX_GetTxDispQueueSize(&number);
       },
       FACE(tx_disp_queue_size), 4},
      {"VDRZAX_SetLogLevel", [] { return VDRZAX_SetLogLevel(0x11223340U); },
       FACE(set_log_level, 0x11223340U), 0},
      {"VDRZAX_SetExtendedLogLevel", [] { return VDRZAX_SetExtendedLogLevel(0x11223340U); },
       FACE(set_extended_log_level, 0x11223340U), 0},
      {"VDRZAX_SetStatsLevel", [] { return VDRZAX_SetStatsLevel(0x11223340U); },
       FACE(set_stats_level, 0x11223340U), 0},
      {"VDRZAX_SetTxDispQueueSize", [] { return VDRZAX_SetTxDispQueueSize(0x11223340U); },
       FACE(set_tx_disp_queue_size, 0x11223340U), 0},
      {"VDRZAX_PreUnload", [] { return VDRZAX_PreUnload(); }, FACE(pre_unload), 0},
      {"VDRZAX_PlumbVdrConnection",
       [] {
         return VDRZAX_PlumbVdrConnection("text-1", "text-2", 0x3122334455667788U, "text-4",
                                          "text-5", "text-6", 0x71223340U);
       },
       FACE(plumb_connection, "text-1",
            {.second = "text-2",
             .fourth = "text-4",
             .fifth = "text-5",
             .sixth = "text-6",
             .seventh = 0x71223340U}),
       0},
      {"VDRZAX_UnPlumbVdrConnection", [] { return VDRZAX_UnPlumbVdrConnection("text-1"); },
       FACE(unplumb_connection, "text-1"), 0},
      {"VDRZAX_GetConnections", [] { return VDRZAX_GetConnections(Scratch()); }, FACE(connections),
       0},
      {"VDRZAX_GetConnection", [] { return VDRZAX_GetConnection("text-1", Scratch()); },
       FACE(connection, "text-1"), 0},
      {"VDRZAX_GetVMAC", [] { return VDRZAX_GetVMAC("text-1", Scratch()); }, FACE(vmac, "text-1"),
       0},
      {"VDRZAX_VDRDevCheckConnDeletion",
       [] {
         std::uint32_t number = 0;
         return VDRZAX_VDRDevCheckConnDeletion(&number);
       },
       FACE(check_conn_deletion), 4},
      {"VDRZAX_GetInstances",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetInstances(nullptr, 0, &out), out, VDRZAX_ReleaseInstances);
       },
       FACE(instances), 0},
      {"VDRZAX_GetInstances",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetInstances("text-1", 1, &out), out, VDRZAX_ReleaseInstances);
       },
       FACE(instances, "text-1"), 0},
      {"VDRZAX_SetVdrInstance", [] { return VDRZAX_SetVdrInstance("text-1", 0, nullptr, 0, 0); },
       FACE(set_instance, "text-1"), 0},
      {"VDRZAX_PlumbVdrConnection",
       [] { return VDRZAX_PlumbVdrConnection("text-1", "", 0, nullptr, nullptr, nullptr, 0); },
       FACE(plumb_connection, "text-1"), 0},
  };
}

}  // namespace cxx
