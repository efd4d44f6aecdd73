#include "sweep/sweep.h"

namespace sweep {

namespace {

// Asks for the number of routes first; to the caller a size that is not told is a table that
// cannot be allocated. The address of the table is of no use after a failure.
Row RoutesV6() {
  auto table = std::make_shared<void*>();
  const getters::OtherGetter& getter = getters::Other("VDRZAX_GetRoutesv6");
  Row row{.name = getter.name,
          .call =
              [table](fake::Device&) {
                uint32_t count;
                return VDRZAX_GetRoutesv6("edge-1", table.get(), &count);
              },
          .release = [table] { std::free(*table); },
          .record = getter.size,
          .allocations = 1,
          .commands = 2};
  row.sizeQuery = {.code = 115, .reply = {1, 0, 0, 0}};
  return row;
}

}  // namespace

Rows RouteRows() {
  return {
      Release("VDRZAX_ReleaseRoute", VDRZAX_ReleaseRoute, 668),
      Release("VDRZAX_ReleaseRoutes", VDRZAX_ReleaseRoutes, 16),
      Release("VDRZAX_ReleaseDemuxRoutes", VDRZAX_ReleaseDemuxRoutes, 16),

      Command("VDRZAX_SetRoutev6",
              [] { return VDRZAX_SetRoutev6(1, 2, 64, 3, 4, "uplink", "edge-1"); }),
      Command("VDRZAX_DelRoutev6",
              [] { return VDRZAX_DelRoutev6(1, 2, 64, 3, 4, "uplink", "edge-1"); }),
      RoutesV6(),

      Command("VDRZAX_SetArp",
              [] { return VDRZAX_SetArp(1, "02:00:00:00:00:01", "uplink", "edge-1"); }),
      Command("VDRZAX_DelArp", [] { return VDRZAX_DelArp(1, "uplink", "edge-1"); }),
      Command("VDRZAX_SetProxyArp", [] { return VDRZAX_SetProxyArp(1, "uplink", "edge-1"); }),
      Command("VDRZAX_DelProxyArp", [] { return VDRZAX_DelProxyArp(1, "uplink", "edge-1"); }),
      Command("VDRZAX_ClearArp", [] { return VDRZAX_ClearArp("edge-1", "uplink"); }),

      Command("VDRZAX_SetArpv6",
              [] { return VDRZAX_SetArpv6(1, 2, "02:00:00:00:00:01", "uplink", "edge-1"); }),
      Command("VDRZAX_DelArpv6", [] { return VDRZAX_DelArpv6(1, 2, "uplink", "edge-1"); }),
      Command("VDRZAX_SetProxyArpv6",
              [] { return VDRZAX_SetProxyArpv6(1, 2, "uplink", "edge-1"); }),
      Command("VDRZAX_DelProxyArpv6",
              [] { return VDRZAX_DelProxyArpv6(1, 2, "uplink", "edge-1"); }),
      Command("VDRZAX_ClearArpv6", [] { return VDRZAX_ClearArpv6("edge-1", "uplink"); }),
      Command("VDRZAX_PMTUTableCearv6", VDRZAX_PMTUTableCearv6),
      Command("VDRZAX_GenericFlush", [] { return VDRZAX_GenericFlush(1, 2, 3, 4, "edge-1", 5); }),
  };
}

}  // namespace sweep
