#include "cxx/calls.h"

namespace cxx {

namespace {

vdrzax::Answer answer;

}  // namespace

Rows RouteCalls() {
  return {
      {"VDRZAX_SetRoute",
       [] {
         return VDRZAX_SetRoute(0x11223340U, 0x21223340U, 0x31223340U, "text-4", "text-5",
                                0x61223340U, Scratch());
       },
       FACE(set_route, "text-5",
            {.route_arg1 = 0x11223340U,
             .route_arg2 = 0x21223340U,
             .route_arg3 = 0x31223340U,
             .if_name = "text-4",
             .route_flags = 0x61223340U},
            &answer),
       0},
      {"VDRZAX_DelRoute",
       [] {
         return VDRZAX_DelRoute(0x11223340U, 0x21223340U, 0x31223340U, "text-4", "text-5",
                                Scratch());
       },
       FACE(delete_route, "text-5",
            {.route_arg1 = 0x11223340U,
             .route_arg2 = 0x21223340U,
             .route_arg3 = 0x31223340U,
             .if_name = "text-4"},
            &answer),
       0},
      {"VDRZAX_GetRoutes",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetRoutes("text-1", &out), out, VDRZAX_ReleaseRoutes);
       },
       FACE(routes, "text-1"), 0},
      {"VDRZAX_GetLifSelectionRoutes",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetLifSelectionRoutes("text-1", &out), out, VDRZAX_ReleaseRoutes);
       },
       FACE(lif_selection_routes, "text-1"), 0},
      {"VDRZAX_GetResolveRoute",
       [] {
         RouteRecord* out = nullptr;
         return Done(VDRZAX_GetResolveRoute("text-1", 0x21223340U, 0x31223340U, 0x41223340U, &out),
                     out, VDRZAX_ReleaseRoute);
       },
       FACE(resolved_route, "text-1", 0x21223340U, 0x31223340U, 0x41223340U), sizeof(RouteRecord)},
      {"VDRZAX_GetResolveRoute",
       [] {
         RouteRecord* out = nullptr;
         return Done(VDRZAX_GetResolveRoute("text-1", 0x21223340U, 0x31223340U, 0x41223340U, &out),
                     out, VDRZAX_ReleaseRoute);
       },
       FACE(find_resolved_route, "text-1", 0x21223340U, 0x31223340U, 0x41223340U),
       sizeof(RouteRecord)},
      {"VDRZAX_GetDemuxRoutes",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetDemuxRoutes(&out), out, VDRZAX_ReleaseDemuxRoutes);
       },
       FACE(demux_routes), 0},
      {"VDRZAX_SetRoutev6",
       [] {
         return VDRZAX_SetRoutev6(0x1122334455667788U, 0x2122334455667788U, 0x31,
                                  0x4122334455667788U, 0x5122334455667788U, "text-6", "text-7");
       },
       FACE(set_route_v6, "text-7",
            {.dest_part1 = 0x1122334455667788U,
             .dest_part2 = 0x2122334455667788U,
             .prefix_length = 0x31,
             .gateway_part1 = 0x4122334455667788U,
             .gateway_part2 = 0x5122334455667788U,
             .if_name = "text-6"}),
       0},
      {"VDRZAX_DelRoutev6",
       [] {
         return VDRZAX_DelRoutev6(0x1122334455667788U, 0x2122334455667788U, 0x31,
                                  0x4122334455667788U, 0x5122334455667788U, "text-6", "text-7");
       },
       FACE(delete_route_v6, "text-7",
            {.dest_part1 = 0x1122334455667788U,
             .dest_part2 = 0x2122334455667788U,
             .prefix_length = 0x31,
             .gateway_part1 = 0x4122334455667788U,
             .gateway_part2 = 0x5122334455667788U,
             .if_name = "text-6"}),
       0},
      {"VDRZAX_GetRoutesv6",
       [] {
         void* out = nullptr;
         std::uint32_t number = 0;
         return Done(VDRZAX_GetRoutesv6("text-1", &out, &number), out, std::free);
       },
       FACE(routes_v6, "text-1"), 4},
      {"VDRZAX_SetArp", [] { return VDRZAX_SetArp(0x11223340U, "text-2", "text-3", "text-4"); },
       FACE(set_arp, "text-4", "text-3", 0x11223340U, "text-2"), 0},
      {"VDRZAX_DelArp", [] { return VDRZAX_DelArp(0x11223340U, "text-2", "text-3"); },
       FACE(delete_arp, "text-3", "text-2", 0x11223340U), 0},
      {"VDRZAX_SetProxyArp", [] { return VDRZAX_SetProxyArp(0x11223340U, "text-2", "text-3"); },
       FACE(set_proxy_arp, "text-3", "text-2", 0x11223340U), 0},
      {"VDRZAX_DelProxyArp", [] { return VDRZAX_DelProxyArp(0x11223340U, "text-2", "text-3"); },
       FACE(delete_proxy_arp, "text-3", "text-2", 0x11223340U), 0},
      {"VDRZAX_GetArps", [] { return VDRZAX_GetArps("text-1", "text-2", Scratch()); },
       FACE(arps, "text-1", "text-2"), 0},
      {"VDRZAX_GetProxyArps", [] { return VDRZAX_GetProxyArps("text-1", "text-2", Scratch()); },
       FACE(proxy_arps, "text-1", "text-2"), 0},
      {"VDRZAX_ClearArp", [] { return VDRZAX_ClearArp("text-1", "text-2"); },
       FACE(clear_arp, "text-1", "text-2"), 0},
      {"VDRZAX_SetArpv6",
       [] {
         return VDRZAX_SetArpv6(0x1122334455667788U, 0x2122334455667788U, "text-3", "text-4",
                                "text-5");
       },
       FACE(set_arp_v6, "text-5", "text-4", 0x1122334455667788U, 0x2122334455667788U, "text-3"), 0},
      {"VDRZAX_DelArpv6",
       [] { return VDRZAX_DelArpv6(0x1122334455667788U, 0x2122334455667788U, "text-3", "text-4"); },
       FACE(delete_arp_v6, "text-4", "text-3", 0x1122334455667788U, 0x2122334455667788U), 0},
      {"VDRZAX_SetProxyArpv6",
       [] {
         return VDRZAX_SetProxyArpv6(0x1122334455667788U, 0x2122334455667788U, "text-3", "text-4");
       },
       FACE(set_proxy_arp_v6, "text-4", "text-3", 0x1122334455667788U, 0x2122334455667788U), 0},
      {"VDRZAX_DelProxyArpv6",
       [] {
         return VDRZAX_DelProxyArpv6(0x1122334455667788U, 0x2122334455667788U, "text-3", "text-4");
       },
       FACE(delete_proxy_arp_v6, "text-4", "text-3", 0x1122334455667788U, 0x2122334455667788U), 0},
      {"VDRZAX_GetArpsv6", [] { return VDRZAX_GetArpsv6("text-1", "text-2", Scratch()); },
       FACE(arps_v6, "text-1", "text-2"), 0},
      {"VDRZAX_ClearArpv6", [] { return VDRZAX_ClearArpv6("text-1", "text-2"); },
       FACE(clear_arp_v6, "text-1", "text-2"), 0},
      {"VDRZAX_PMTUTableCearv6", [] { return VDRZAX_PMTUTableCearv6(); }, FACE(clear_pmtu_table_v6),
       0},
      {"VDRZAX_GenericFlush",
       [] { return VDRZAX_GenericFlush(0x11223340U, 0x21, 0x31, 0x41, "text-5", 0x61223340U); },
       FACE(generic_flush, {.flush_target = 0x11223340U,
                            .flush_selector1 = 0x21,
                            .flush_selector2 = 0x31,
                            .flush_selector3 = 0x41,
                            .flush_name = "text-5",
                            .flush_value = 0x61223340U}),
       0},
      {"VDRZAX_SetRoute", [] { return VDRZAX_SetRoute(1, 2, 3, nullptr, "text-5", 6, nullptr); },
       FACE(set_route, "text-5",
            {.route_arg1 = 1, .route_arg2 = 2, .route_arg3 = 3, .route_flags = 6}),
       0},
      {"VDRZAX_DelRoute", [] { return VDRZAX_DelRoute(1, 2, 3, nullptr, "text-5", nullptr); },
       FACE(delete_route, "text-5", {.route_arg1 = 1, .route_arg2 = 2, .route_arg3 = 3}), 0},
      {"VDRZAX_GetArps", [] { return VDRZAX_GetArps("text-1", nullptr, Scratch()); },
       FACE(arps, "text-1"), 0},
      {"VDRZAX_ClearArp", [] { return VDRZAX_ClearArp("text-1", nullptr); },
       FACE(clear_arp, "text-1"), 0},
      {"VDRZAX_GenericFlush", [] { return VDRZAX_GenericFlush(1, 2, 3, 4, nullptr, 5); },
       FACE(generic_flush, {.flush_target = 1,
                            .flush_selector1 = 2,
                            .flush_selector2 = 3,
                            .flush_selector3 = 4,
                            .flush_value = 5}),
       0},
  };
}

}  // namespace cxx
