#include "sweep/sweep.h"

namespace sweep {

namespace {

constexpr MacValue kMac{{2, 0, 0, 0, 0, 1}};

Row RemoteReceivers(uint32_t count) {
  const getters::OtherGetter& table = getters::Other("VDRZAX_GetMRoutingRemoteRcvrs");
  const std::size_t needed = table.prefix + count * table.size;
  return Allocated<VTEPTable>(
             table.name,
             [](VTEPTable** out) { return VDRZAX_GetMRoutingRemoteRcvrs("edge-1", 1, out); },
             VDRZAX_ReleaseVTEPTable, needed, 3)
      .Refusing(ShorterThan(needed))
      .Holding(0, 4, count)
      .Filled();
}

}  // namespace

Rows McastRows() {
  return {
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
      Release("VDRZAX_ReleaseMRoutingDomainData", VDRZAX_ReleaseMRoutingDomainData, 148),
      Release("VDRZAX_ReleaseMRoutingMcastGroups", VDRZAX_ReleaseMRoutingMcastGroups, 16),
      Command("VDRZAX_AddMRoutingMRouter",
              [] { return VDRZAX_AddMRoutingMRouter("edge-1", 0x0A000001); }),
      Command("VDRZAX_DelMRoutingMRouter", [] { return VDRZAX_DelMRoutingMRouter("edge-1"); }),
  };
}

}  // namespace sweep
