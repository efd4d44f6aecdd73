#include <vdrzax/services.h>

#include "support/getters/table.h"

namespace getters {

using wire::Block;

const Family& Services() {
  static const Family family{
      .raws = {{.name = "VDRZAX_PerformFullSyncSave",
                .call =
                    [](void* status) {
                      return VDRZAX_PerformFullSyncSave(0xFF, static_cast<uint32_t*>(status));
                    },
                .code = 123,
                .block = Block().U8(256, 0xFF),
                .size = 4},
               {.name = "VDRZAX_GetFullSyncSaveStatus",
                .call =
                    [](void* status) {
                      return VDRZAX_GetFullSyncSaveStatus(static_cast<uint32_t*>(status));
                    },
                .code = 124,
                .size = 4}},
      .others = {{.name = "VDRZAX_SoftRSSGetStats", .code = 153, .size = 852},
                 {.name = "VDRZAX_SoftRSSGetTunables", .code = 155, .size = 12},
                 {.name = "VDRZAX_SoftRSSGetIndTable", .code = 157, .size = 128},
                 {.name = "VDRZAX_GetVMPublicIPEntry", .code = 170, .size = 1042},
                 {.name = "VDRZAX_GetVMPublicIPTable",
                  .code = 171,
                  .size = 1042,
                  .cap = 8192,
                  .prefix = 4}}};
  return family;
}

}  // namespace getters
