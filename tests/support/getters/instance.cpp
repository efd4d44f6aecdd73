#include <vdrzax/instance.h>

#include <cstdlib>

#include "support/getters/table.h"

namespace getters {

using wire::Block;

namespace {

RawGetter Setting(const char* name, int (*get)(uint32_t* value), unsigned long code) {
  return {.name = name,
          .call = [get](void* value) { return get(static_cast<uint32_t*>(value)); },
          .code = code,
          .block = Block::None(),
          .size = 4,
          .into = Into::Variable};
}

}  // namespace

const Family& Instance() {
  static const Family family{
      .lists = {{.name = "VDRZAX_GetInstances",
                 .call = [](auto** out) { return VDRZAX_GetInstances("edge-1", 1, out); },
                 .release = VDRZAX_ReleaseInstances,
                 .code = 0,
                 .block = Block().Text(0, "edge-1").U8(368, 1),
                 .size = 577,
                 .cap = 1001}},
      .records = {{.name = "VDRZAX_GetInstance",
                   .call = Get<InstanceRecord>(
                       [](auto** out) { return VDRZAX_GetInstance("edge-1", out); }),
                   .release = Free(VDRZAX_ReleaseInstance),
                   .code = 1,
                   .block = Block().Text(0, "edge-1"),
                   .size = 577},
                  {.name = "VDRZAX_GetVdrInstanceCPStats",
                   .call = Get<StatsRecord>(
                       [](auto** out) { return VDRZAX_GetVdrInstanceCPStats("edge-1", out); }),
                   .release = Free(VDRZAX_ReleaseStats),
                   .code = 5,
                   .block = Block().Text(0, "edge-1"),
                   .size = 852},
                  {.name = "VDRZAX_GetLifStats",
                   .call = Get<StatsRecord>(
                       [](auto** out) { return VDRZAX_GetLifStats("edge-1", "uplink", out); }),
                   .release = Free(VDRZAX_ReleaseStats),
                   .code = 23,
                   .block = Block().Text(0, "edge-1").Text(384, "uplink"),
                   .size = 852},
                  {.name = "VDRZAX_GetLifStatsCached",
                   .call = Get<StatsRecord>([](auto** out) {
                     return VDRZAX_GetLifStatsCached("edge-1", "uplink", out);
                   }),
                   .release = Free(VDRZAX_ReleaseStats),
                   .code = 23,
                   .block = Block().Text(0, "edge-1").Text(384, "uplink").U32(552, 1),
                   .size = 852},
                  {.name = "VDRZAX_GetVdrDiStats",
                   .call = Get<StatsRecord>(VDRZAX_GetVdrDiStats),
                   .release = Free(VDRZAX_ReleaseStats),
                   .code = 43,
                   .size = 852},
                  {.name = "VDRZAX_GetVdrInstanceCPSyncState",
                   .call = Get<CPSyncStateRecord>(
                       [](auto** out) { return VDRZAX_GetVdrInstanceCPSyncState("edge-1", out); }),
                   .release = std::free,
                   .code = 87,
                   .block = Block().Text(0, "edge-1"),
                   .size = 1420}},
      .raws = {Setting("VDRZAX_GetLogLevel", VDRZAX_GetLogLevel, 9),
               Setting("VDRZAX_GetExtendedLogLevel", VDRZAX_GetExtendedLogLevel, 11),
               Setting("VDRZAX_GetStatsLevel", VDRZAX_GetStatsLevel, 13),
               Setting("VDRZAX_GetTxDispQueueSize", VDRZAX_GetTxDispQueueSize, 159),
               Setting("VDRZAX_VDRDevCheckConnDeletion", VDRZAX_VDRDevCheckConnDeletion, 85),
               {.name = "VDRZAX_GetConnections",
                .call = VDRZAX_GetConnections,
                .code = 17,
                .size = 131072},
               {.name = "VDRZAX_GetConnection",
                .call = [](void* buffer) { return VDRZAX_GetConnection("conn-1", buffer); },
                .code = 18,
                .block = Block().Text(256, "conn-1"),
                .size = 152},
               {.name = "VDRZAX_GetVMAC",
                .call = [](void* buffer) { return VDRZAX_GetVMAC("conn-1", buffer); },
                .code = 149,
                .block = Block().Text(256, "conn-1"),
                .size = 6}}};
  return family;
}

}  // namespace getters
