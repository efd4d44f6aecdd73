#include "sweep/sweep.h"

namespace sweep {

namespace {

constexpr MacValue kMac{{2, 0, 0, 0, 0, 1}};

Row RemoteReceivers(uint32_t count) {
  const std::size_t needed = 4 + count * 68;
  return Allocated<VTEPTable>(
             "VDRZAX_GetMRoutingRemoteRcvrs",
             [](VTEPTable** out) { return VDRZAX_GetMRoutingRemoteRcvrs("edge-1", 1, out); },
             VDRZAX_ReleaseVTEPTable, needed, 3)
      .Refusing(ShorterThan(needed))
      .Holding(0, 4, count)
      .Filled();
}

}  // namespace

// The lists of local receivers and of groups lose their header when the command fails.
Rows McastRows() {
  return {
      List(
          "VDRZAX_GetMRoutingLocalRcvrs",
          [](RecordList** out) { return VDRZAX_GetMRoutingLocalRcvrs("edge-1", 1, out); },
          VDRZAX_ReleaseMRoutingLocalRcvrs, 88, 512)
          .KeepingOnFailedCommand(16),
      Command("VDRZAX_AddMRoutingLocalRcvrs",
              [] { return VDRZAX_AddMRoutingLocalRcvrs("edge-1", 1, "receiver"); }),
      Command("VDRZAX_DelMRoutingLocalRcvrs",
              [] { return VDRZAX_DelMRoutingLocalRcvrs("edge-1", 1, "receiver"); }),
      Release("VDRZAX_ReleaseMRoutingLocalRcvrs", VDRZAX_ReleaseMRoutingLocalRcvrs, 16),
      RemoteReceivers(2048),
      // The entries of an empty table are not given back.
      RemoteReceivers(0).KeepingOnRelease(0),
      Release("VDRZAX_ReleaseVTEPTable", VDRZAX_ReleaseVTEPTable, 16),
      Command("VDRZAX_AddMRoutingRemoteRcvrs",
              [] { return VDRZAX_AddMRoutingRemoteRcvrs("edge-1", 1, 2, &kMac, 4, 5); }),
      Command("VDRZAX_DelMRoutingRemoteRcvrs",
              [] { return VDRZAX_DelMRoutingRemoteRcvrs("edge-1", 1, 2); }),
      Record<MRoutingDomain>(
          "VDRZAX_GetMRoutingDomain",
          [](MRoutingDomain** out) { return VDRZAX_GetMRoutingDomain("edge-1", out); },
          VDRZAX_ReleaseMRoutingDomainData, 148),
      Release("VDRZAX_ReleaseMRoutingDomainData", VDRZAX_ReleaseMRoutingDomainData, 148),

      // A group that is cut off counts as whole.
      List(
          "VDRZAX_GetMRoutingAllMcastGroups",
          [](RecordList** out) { return VDRZAX_GetMRoutingAllMcastGroups("edge-1", out); },
          VDRZAX_ReleaseMRoutingMcastGroups, 12, 4096)
          .Refusing([](uint32_t) { return 0; })
          .KeepingOnFailedCommand(16),
      Release("VDRZAX_ReleaseMRoutingMcastGroups", VDRZAX_ReleaseMRoutingMcastGroups, 16),
      Scalar("VDRZAX_GetMRoutingReplicationIP",
             [](uint32_t* out) { return VDRZAX_GetMRoutingReplicationIP("edge-1", 1, out); }),
      Scalar("VDRZAX_GetMRoutingMRouterIP",
             [](uint32_t* out) { return VDRZAX_GetMRoutingMRouterIP("edge-1", 1, out); }),
      Command("VDRZAX_AddMRoutingMRouter",
              [] { return VDRZAX_AddMRoutingMRouter("edge-1", 0x0A000001); }),
      Command("VDRZAX_DelMRoutingMRouter", [] { return VDRZAX_DelMRoutingMRouter("edge-1"); }),
  };
}

}  // namespace sweep
