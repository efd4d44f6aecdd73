#include "sweep/sweep.h"

namespace sweep {

Rows PolicyRows() {
  return {
      [] {
        // A short count keeps its four bytes.
        const getters::OtherGetter& getter = getters::Other("VDRZAX_GetPolicyCount");
        Row row =
            Raw(getter,
                [](void* count) { return VDRZAX_GetPolicyCount(1, static_cast<uint32_t*>(count)); })
                .Refusing(ShorterThan(getter.size))
                .KeepingOnRefusedReply(getter.size);
        row.allocations = 1;
        return row;
      }(),
      Release("VDRZAX_ReleaseAllPolicy", VDRZAX_ReleaseAllPolicy, 16),
      Release("VDRZAX_ReleaseAllPolicyTable", VDRZAX_ReleaseAllPolicyTable, 16),
      Release("VDRZAX_ReleaseLifPolicyTableRef", VDRZAX_ReleaseLifPolicyTableRef, 546),
  };
}

}  // namespace sweep
