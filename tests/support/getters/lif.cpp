#include <vdrzax/lif.h>

#include "support/getters/table.h"

namespace getters {

using wire::Block;

namespace {

constexpr Count kSubEntries{.offset = 566, .width = 4, .most = 10};

}  // namespace

const Family& Lif() {
  static const Family family{
      .lists = {{.name = "VDRZAX_GetLifs",
                 .call = [](auto** out) { return VDRZAX_GetLifs("edge-1", out); },
                 .release = VDRZAX_ReleaseLifs,
                 .code = 21,
                 .block = Block().Text(0, "edge-1"),
                 .size = 961,
                 .cap = 10000,
                 .count = kSubEntries,
                 .hidesDecodeFailure = true},
                {.name = "VDRZAX_GetExtVlanLifs",
                 .call = [](auto** out) { return VDRZAX_GetExtVlanLifs(0x1234, out); },
                 .release = VDRZAX_ReleaseLifs,
                 .code = 172,
                 .block = Block().U32(260, 0x1234),
                 .size = 961,
                 .cap = 10000,
                 .count = kSubEntries},
                {.name = "VDRZAX_GetBridgeLifs",
                 .call = [](auto** out) { return VDRZAX_GetBridgeLifs("edge-1", out); },
                 .release = VDRZAX_ReleaseLifs,
                 .code = 59,
                 .block = Block().Text(0, "edge-1"),
                 .size = 961,
                 .cap = 10000,
                 .count = kSubEntries,
                 .dropsHeader = true}},
      .records = {{.name = "VDRZAX_GetLif",
                   .call = Get<LifRecord>(
                       [](auto** out) { return VDRZAX_GetLif("edge-1", "uplink", out); }),
                   .release = Free(VDRZAX_ReleaseLif),
                   .code = 22,
                   .block = Block().Text(0, "edge-1").Text(384, "uplink"),
                   .size = 961,
                   .count = kSubEntries},
                  {.name = "VDRZAX_GetBridgeLif",
                   .call = Get<LifRecord>(
                       [](auto** out) { return VDRZAX_GetBridgeLif("edge-1", "uplink", out); }),
                   .release = Free(VDRZAX_ReleaseLif),
                   .code = 60,
                   .block = Block().Text(0, "edge-1").Text(384, "uplink"),
                   .size = 961,
                   .count = kSubEntries}}};
  return family;
}

}  // namespace getters
