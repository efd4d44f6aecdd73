#include <vdrzax/mcast.h>

#include "support/getters/table.h"

namespace getters {

using wire::Block;

// The lists lose their header when the command fails.
const Family& Mcast() {
  static const Family family{
      .lists = {{.name = "VDRZAX_GetMRoutingLocalRcvrs",
                 .call =
                     [](auto** out) {
                       return VDRZAX_GetMRoutingLocalRcvrs("edge-1", 0x11223344, out);
                     },
                 .release = VDRZAX_ReleaseMRoutingLocalRcvrs,
                 .code = 128,
                 .block = Block().Text(0, "edge-1").U32(256, 0x11223344),
                 .size = 88,
                 .cap = 512,
                 .dropsHeader = true},
                {.name = "VDRZAX_GetMRoutingAllMcastGroups",
                 .call = [](auto** out) { return VDRZAX_GetMRoutingAllMcastGroups("edge-1", out); },
                 .release = VDRZAX_ReleaseMRoutingMcastGroups,
                 .code = 135,
                 .block = Block().Text(0, "edge-1"),
                 .size = 12,
                 .cap = 4096,
                 .dropsHeader = true,
                 .takesCutRecord = true}},
      .records = {{.name = "VDRZAX_GetMRoutingDomain",
                   .call = Get<MRoutingDomain>(
                       [](auto** out) { return VDRZAX_GetMRoutingDomain("edge-1", out); }),
                   .release = Free(VDRZAX_ReleaseMRoutingDomainData),
                   .code = 130,
                   .block = Block().Text(0, "edge-1"),
                   .size = 148}},
      .raws = {{.name = "VDRZAX_GetMRoutingReplicationIP",
                .call =
                    [](void* ip) {
                      return VDRZAX_GetMRoutingReplicationIP("edge-1", 0x11223344,
                                                             static_cast<uint32_t*>(ip));
                    },
                .code = 136,
                .block = Block().Text(0, "edge-1").U32(256, 0x11223344),
                .size = 4},
               {.name = "VDRZAX_GetMRoutingMRouterIP",
                .call =
                    [](void* ip) {
                      return VDRZAX_GetMRoutingMRouterIP("edge-1", 0x11223344,
                                                         static_cast<uint32_t*>(ip));
                    },
                .code = 139,
                .block = Block().Text(0, "edge-1").U32(256, 0x11223344),
                .size = 4}},
      .others = {{.name = "VDRZAX_GetMRoutingRemoteRcvrs",
                  .code = 129,
                  .size = 68,
                  .cap = 2048,
                  .prefix = 4}}};
  return family;
}

}  // namespace getters
