#include "sweep/sweep.h"

namespace sweep {

Rows InstanceRows() {
  return {
      Record<InstanceRecord>(
          "VDRZAX_GetInstance",
          [](InstanceRecord** out) { return VDRZAX_GetInstance("edge-1", out); },
          VDRZAX_ReleaseInstance, 577),
      List(
          "VDRZAX_GetInstances",
          [](RecordList** out) { return VDRZAX_GetInstances("edge-1", 1, out); },
          VDRZAX_ReleaseInstances, 577, 1001),
      Command("VDRZAX_SetVdrInstance",
              [] { return VDRZAX_SetVdrInstance("edge-1", 2, "text", 4, 1); }),
      Command("VDRZAX_DelVdrInstance", [] { return VDRZAX_DelVdrInstance("edge-1"); }),
      Command("VDRZAX_SetVdrInstanceTunables",
              [] { return VDRZAX_SetVdrInstanceTunables("edge-1", "tunables", 3); }),
      Release("VDRZAX_ReleaseInstance", VDRZAX_ReleaseInstance, 577),
      Release("VDRZAX_ReleaseInstances", VDRZAX_ReleaseInstances, 16),

      Record<StatsRecord>(
          "VDRZAX_GetVdrInstanceCPStats",
          [](StatsRecord** out) { return VDRZAX_GetVdrInstanceCPStats("edge-1", out); },
          VDRZAX_ReleaseStats, 852)
          .Holding(0, 4, 0),
      Record<StatsRecord>(
          "VDRZAX_GetLifStats",
          [](StatsRecord** out) { return VDRZAX_GetLifStats("edge-1", "uplink", out); },
          VDRZAX_ReleaseStats, 852)
          .Holding(0, 4, 1),
      Record<StatsRecord>(
          "VDRZAX_GetLifStatsCached",
          [](StatsRecord** out) { return VDRZAX_GetLifStatsCached("edge-1", "uplink", out); },
          VDRZAX_ReleaseStats, 852)
          .Holding(0, 4, 2),
      Record<StatsRecord>(
          "VDRZAX_GetVdrDiStats", [](StatsRecord** out) { return VDRZAX_GetVdrDiStats(out); },
          VDRZAX_ReleaseStats, 852)
          .Holding(0, 4, 3),
      Command("VDRZAX_ResetVdrInstanceCPStats",
              [] { return VDRZAX_ResetVdrInstanceCPStats("edge-1"); }),
      Command("VDRZAX_ResetLifStats", [] { return VDRZAX_ResetLifStats("edge-1", "uplink"); }),
      Command("VDRZAX_ResetVdrDiStats", VDRZAX_ResetVdrDiStats),
      Release("VDRZAX_ReleaseStats", VDRZAX_ReleaseStats, 852),

      Record<CPSyncStateRecord>(
          "VDRZAX_GetVdrInstanceCPSyncState",
          [](CPSyncStateRecord** out) { return VDRZAX_GetVdrInstanceCPSyncState("edge-1", out); },
          [](CPSyncStateRecord* record) { std::free(record); }, 1420),
      Command("VDRZAX_SetVdrInstanceCPSyncState",
              [] { return VDRZAX_SetVdrInstanceCPSyncState("edge-1", 2); }),
      Command("VDRZAX_CPActivate", [] { return VDRZAX_CPActivate(1); }),
      Command("VDRZAX_SetCPIp", [] { return VDRZAX_SetCPIp("edge-1", 0x0A000001); }),

      Scalar("VDRZAX_GetLogLevel", VDRZAX_GetLogLevel),
      Scalar("VDRZAX_GetExtendedLogLevel", VDRZAX_GetExtendedLogLevel),
      Scalar("VDRZAX_GetStatsLevel", VDRZAX_GetStatsLevel),
      Scalar("VDRZAX_GetTxDispQueueSize", VDRZAX_GetTxDispQueueSize),
      Command("VDRZAX_SetLogLevel", [] { return VDRZAX_SetLogLevel(1); }),
      Command("VDRZAX_SetExtendedLogLevel", [] { return VDRZAX_SetExtendedLogLevel(2); }),
      Command("VDRZAX_SetStatsLevel", [] { return VDRZAX_SetStatsLevel(3); }),
      Command("VDRZAX_SetTxDispQueueSize", [] { return VDRZAX_SetTxDispQueueSize(4); }),
      Command("VDRZAX_PreUnload", VDRZAX_PreUnload),

      Command("VDRZAX_PlumbVdrConnection",
              [] {
                return VDRZAX_PlumbVdrConnection("conn-1", "second", 3, "fourth", "fifth", "sixth",
                                                 7);
              }),
      Command("VDRZAX_UnPlumbVdrConnection", [] { return VDRZAX_UnPlumbVdrConnection("conn-1"); }),
      Raw("VDRZAX_GetConnections", VDRZAX_GetConnections, 131072),
      Raw(
          "VDRZAX_GetConnection",
          [](void* buffer) { return VDRZAX_GetConnection("conn-1", buffer); }, 152),
      Raw(
          "VDRZAX_GetVMAC", [](void* buffer) { return VDRZAX_GetVMAC("conn-1", buffer); }, 6),
      Scalar("VDRZAX_VDRDevCheckConnDeletion", VDRZAX_VDRDevCheckConnDeletion),
  };
}

}  // namespace sweep
