#include "sweep/sweep.h"

namespace sweep {

namespace {

// Asks for the number of routes first; to the caller a size that is not told is a table that
// cannot be allocated. The address of the table is of no use after a failure.
Row RoutesV6() {
  auto table = std::make_shared<void*>();
  Row row{.name = "VDRZAX_GetRoutesv6",
          .call =
              [table](fake::Device&) {
                uint32_t count;
                return VDRZAX_GetRoutesv6("edge-1", table.get(), &count);
              },
          .release = [table] { std::free(*table); },
          .record = 776,
          .allocations = 1,
          .commands = 2};
  row.sizeQuery = {.code = 115, .reply = {1, 0, 0, 0}};
  return row;
}

}  // namespace

// All next hops of a route count as valid.
Rows RouteRows() {
  return {
      Raw(
          "VDRZAX_SetRoute",
          [](void* result) { return VDRZAX_SetRoute(1, 2, 3, "uplink", "edge-1", 4, result); }, 88),
      Raw(
          "VDRZAX_DelRoute",
          [](void* result) { return VDRZAX_DelRoute(1, 2, 3, "uplink", "edge-1", result); }, 88),
      List(
          "VDRZAX_GetRoutes", [](RecordList** out) { return VDRZAX_GetRoutes("edge-1", out); },
          VDRZAX_ReleaseRoutes, 668, 20000)
          .Holding(17, 1, 8),
      List(
          "VDRZAX_GetLifSelectionRoutes",
          [](RecordList** out) { return VDRZAX_GetLifSelectionRoutes("edge-1", out); },
          VDRZAX_ReleaseRoutes, 668, 20000)
          .Holding(17, 1, 8),
      Record<RouteRecord>(
          "VDRZAX_GetResolveRoute",
          [](RouteRecord** out) { return VDRZAX_GetResolveRoute("edge-1", 1, 2, 3, out); },
          VDRZAX_ReleaseRoute, 668)
          .Holding(17, 1, 8),
      Release("VDRZAX_ReleaseRoute", VDRZAX_ReleaseRoute, 668),
      Release("VDRZAX_ReleaseRoutes", VDRZAX_ReleaseRoutes, 16),
      List("VDRZAX_GetDemuxRoutes", VDRZAX_GetDemuxRoutes, VDRZAX_ReleaseDemuxRoutes, 148, 30000),
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
      Raw(
          "VDRZAX_GetArps", [](void* buffer) { return VDRZAX_GetArps("edge-1", "uplink", buffer); },
          7667712),
      Raw(
          "VDRZAX_GetProxyArps",
          [](void* buffer) { return VDRZAX_GetProxyArps("edge-1", "uplink", buffer); }, 7667712),
      Command("VDRZAX_ClearArp", [] { return VDRZAX_ClearArp("edge-1", "uplink"); }),

      Command("VDRZAX_SetArpv6",
              [] { return VDRZAX_SetArpv6(1, 2, "02:00:00:00:00:01", "uplink", "edge-1"); }),
      Command("VDRZAX_DelArpv6", [] { return VDRZAX_DelArpv6(1, 2, "uplink", "edge-1"); }),
      Command("VDRZAX_SetProxyArpv6",
              [] { return VDRZAX_SetProxyArpv6(1, 2, "uplink", "edge-1"); }),
      Command("VDRZAX_DelProxyArpv6",
              [] { return VDRZAX_DelProxyArpv6(1, 2, "uplink", "edge-1"); }),
      Raw(
          "VDRZAX_GetArpsv6",
          [](void* buffer) { return VDRZAX_GetArpsv6("edge-1", "uplink", buffer); }, 7667712),
      Command("VDRZAX_ClearArpv6", [] { return VDRZAX_ClearArpv6("edge-1", "uplink"); }),
      Command("VDRZAX_PMTUTableCearv6", VDRZAX_PMTUTableCearv6),
      Command("VDRZAX_GenericFlush", [] { return VDRZAX_GenericFlush(1, 2, 3, 4, "edge-1", 5); }),
  };
}

}  // namespace sweep
