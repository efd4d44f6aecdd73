#include <vdrzax/route.h>

#include "support/getters/table.h"

namespace getters {

using wire::Block;

namespace {

constexpr Count kNextHops{.offset = 17, .width = 1, .most = 8};

Block RouteBlock() {
  return Block()
      .Text(0, "edge-1")
      .U32(256, 0x11223344)
      .U32(260, 0x55667788)
      .U32(268, 0x99AABBCC)
      .Text(276, "uplink");
}

}  // namespace

const Family& Route() {
  static const Family family{
      .lists = {{.name = "VDRZAX_GetRoutes",
                 .call = [](auto** out) { return VDRZAX_GetRoutes("edge-1", out); },
                 .release = VDRZAX_ReleaseRoutes,
                 .code = 36,
                 .block = Block().Text(0, "edge-1"),
                 .size = 668,
                 .cap = 20000,
                 .count = kNextHops},
                {.name = "VDRZAX_GetLifSelectionRoutes",
                 .call = [](auto** out) { return VDRZAX_GetLifSelectionRoutes("edge-1", out); },
                 .release = VDRZAX_ReleaseRoutes,
                 .code = 174,
                 .block = Block().Text(0, "edge-1"),
                 .size = 668,
                 .cap = 20000,
                 .count = kNextHops},
                {.name = "VDRZAX_GetDemuxRoutes",
                 .call = VDRZAX_GetDemuxRoutes,
                 .release = VDRZAX_ReleaseDemuxRoutes,
                 .code = 173,
                 .size = 148,
                 .cap = 30000}},
      .records = {{.name = "VDRZAX_GetResolveRoute",
                   .call = Get<RouteRecord>([](auto** out) {
                     return VDRZAX_GetResolveRoute("edge-1", 0x11223344, 0x55667788, 0x99AABBCC,
                                                   out);
                   }),
                   .release = Free(VDRZAX_ReleaseRoute),
                   .code = 37,
                   .block = Block()
                                .Text(0, "edge-1")
                                .U32(256, 0x11223344)
                                .U32(260, 0x55667788)
                                .U32(264, 0x99AABBCC),
                   .size = 668,
                   .count = kNextHops}},
      .raws = {{.name = "VDRZAX_SetRoute",
                .call =
                    [](void* result) {
                      return VDRZAX_SetRoute(0x11223344, 0x55667788, 0x99AABBCC, "uplink", "edge-1",
                                             0xDDEEFF01, result);
                    },
                .code = 34,
                .block = RouteBlock().U32(272, 0xDDEEFF01),
                .size = 88,
                .into = Into::ClearedBuffer},
               {.name = "VDRZAX_DelRoute",
                .call =
                    [](void* result) {
                      return VDRZAX_DelRoute(0x11223344, 0x55667788, 0x99AABBCC, "uplink", "edge-1",
                                             result);
                    },
                .code = 35,
                .block = RouteBlock(),
                .size = 88,
                .into = Into::ClearedBuffer},
               {.name = "VDRZAX_GetArps",
                .call = [](void* buffer) { return VDRZAX_GetArps("edge-1", "uplink", buffer); },
                .code = 40,
                .block = Block().Text(0, "edge-1").Text(384, "uplink"),
                .size = 7667712},
               {.name = "VDRZAX_GetProxyArps",
                .call =
                    [](void* buffer) { return VDRZAX_GetProxyArps("edge-1", "uplink", buffer); },
                .code = 40,
                .block = Block().Text(0, "edge-1").Text(384, "uplink").U8(917, 1),
                .size = 7667712},
               {.name = "VDRZAX_GetArpsv6",
                .call = [](void* buffer) { return VDRZAX_GetArpsv6("edge-1", "uplink", buffer); },
                .code = 116,
                .block = Block().Text(0, "edge-1").Text(384, "uplink"),
                .size = 7667712}},
      // Of 20000 routes and more there is room for 30000.
      .others = {{.name = "VDRZAX_GetRoutesv6", .code = 114, .size = 776, .cap = 20000}}};
  return family;
}

}  // namespace getters
