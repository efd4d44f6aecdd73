#include "sweep/sweep.h"

namespace sweep {

namespace {

// What is decoded of statistics depends on their type.
Row Stats(uint32_t type) {
  return Getter(getters::Record("VDRZAX_GetVdrDiStats")).Holding(0, 4, type);
}

}  // namespace

Rows InstanceRows() {
  return {
      Stats(0),
      Stats(1),
      Stats(2),
      Stats(3),
      Command("VDRZAX_SetVdrInstance",
              [] { return VDRZAX_SetVdrInstance("edge-1", 2, "text", 4, 1); }),
      Command("VDRZAX_DelVdrInstance", [] { return VDRZAX_DelVdrInstance("edge-1"); }),
      Command("VDRZAX_SetVdrInstanceTunables",
              [] { return VDRZAX_SetVdrInstanceTunables("edge-1", "tunables", 3); }),
      Release("VDRZAX_ReleaseInstance", VDRZAX_ReleaseInstance, 577),
      Release("VDRZAX_ReleaseInstances", VDRZAX_ReleaseInstances, 16),
      Command("VDRZAX_ResetVdrInstanceCPStats",
              [] { return VDRZAX_ResetVdrInstanceCPStats("edge-1"); }),
      Command("VDRZAX_ResetLifStats", [] { return VDRZAX_ResetLifStats("edge-1", "uplink"); }),
      Command("VDRZAX_ResetVdrDiStats", VDRZAX_ResetVdrDiStats),
      Release("VDRZAX_ReleaseStats", VDRZAX_ReleaseStats, 852),
      Command("VDRZAX_SetVdrInstanceCPSyncState",
              [] { return VDRZAX_SetVdrInstanceCPSyncState("edge-1", 2); }),
      Command("VDRZAX_CPActivate", [] { return VDRZAX_CPActivate(1); }),
      Command("VDRZAX_SetCPIp", [] { return VDRZAX_SetCPIp("edge-1", 0x0A000001); }),
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
  };
}

}  // namespace sweep
