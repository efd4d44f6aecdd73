#include <vdrzax/e2i.h>

#include "support/getters/table.h"

namespace getters {

using wire::Block;

const Family& E2i() {
  static const Family family{
      .raws = {{.name = "VDRZAX_GetPmac", .call = VDRZAX_GetPmac, .code = 73, .size = 131072},
               {.name = "VDRZAX_GetLocaleId", .call = VDRZAX_GetLocaleId, .code = 86, .size = 16},
               {.name = "VDRZAX_DumpFLTable",
                .call = [](void* buffer) { return VDRZAX_DumpFLTable(0x1234, buffer); },
                .code = 72,
                .block = Block().U16(256, 0x1234),
                .size = 426080}},
      .others = {
          {.name = "VDRZAX_GetE2IEntry", .code = 165, .size = 26},
          {.name = "VDRZAX_GetE2ITable", .code = 164, .size = 26, .cap = 8192, .prefix = 4}}};
  return family;
}

}  // namespace getters
