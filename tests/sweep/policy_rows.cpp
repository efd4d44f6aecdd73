#include "sweep/sweep.h"

namespace sweep {

// All entries of a table reference count as valid.
Rows PolicyRows() {
  static constexpr PolicyTableRefEntry kEntries[2] = {{1, 2, 3}, {4, 5, 6}};
  return {
      Raw(
          "VDRZAX_SetPolicy", [](void* result) { return VDRZAX_SetPolicy(1, 2, 3, 4, result); },
          88),
      Raw(
          "VDRZAX_DelPolicy", [](void* result) { return VDRZAX_DelPolicy(1, 2, 3, result); }, 88),
      List(
          "VDRZAX_GetPolicy", [](RecordList** out) { return VDRZAX_GetPolicy(1, out); },
          VDRZAX_ReleaseAllPolicy, 28, 1000),
      [] {
        // A short count keeps its four bytes.
        Row row = Scalar("VDRZAX_GetPolicyCount",
                         [](uint32_t* count) { return VDRZAX_GetPolicyCount(1, count); })
                      .Refusing(ShorterThan(4))
                      .KeepingOnRefusedReply(4);
        row.allocations = 1;
        return row;
      }(),
      Release("VDRZAX_ReleaseAllPolicy", VDRZAX_ReleaseAllPolicy, 16),

      Raw(
          "VDRZAX_SetPolicyTable",
          [](void* result) { return VDRZAX_SetPolicyTable(1, "table", result); }, 88),
      Raw(
          "VDRZAX_DelPolicyTable", [](void* result) { return VDRZAX_DelPolicyTable(1, result); },
          88),
      List("VDRZAX_GetPolicyTable", VDRZAX_GetPolicyTable, VDRZAX_ReleaseAllPolicyTable, 72, 1000),
      Release("VDRZAX_ReleaseAllPolicyTable", VDRZAX_ReleaseAllPolicyTable, 16),

      Raw(
          "VDRZAX_SetLifPolicy",
          [](void* result) {
            return VDRZAX_SetLifPolicy(4, "uplink", 1, 2, 3, "downlink", "edge-1", 5, result);
          },
          88),
      Raw(
          "VDRZAX_DelLifPolicy",
          [](void* result) {
            return VDRZAX_DelLifPolicy(4, "uplink", 1, 2, 3, "downlink", "edge-1", 5, result);
          },
          88),
      List(
          "VDRZAX_GetLifPolicies",
          [](RecordList** out) { return VDRZAX_GetLifPolicies("edge-1", 4, "uplink", out); },
          VDRZAX_ReleaseRoutes, 668, 20000)
          .Holding(17, 1, 8),
      Raw(
          "VDRZAX_SetLifPolicyTableRef",
          [](void* result) {
            return VDRZAX_SetLifPolicyTableRef("edge-1", "uplink", 2, kEntries, result);
          },
          88),
      Raw(
          "VDRZAX_DelLifPolicyTableRef",
          [](void* result) { return VDRZAX_DelLifPolicyTableRef("edge-1", "uplink", result); }, 88),
      Record<LifPolicyTableRef>(
          "VDRZAX_GetLifPolicyTableRef",
          [](LifPolicyTableRef** out) {
            return VDRZAX_GetLifPolicyTableRef("edge-1", "uplink", out);
          },
          VDRZAX_ReleaseLifPolicyTableRef, 546)
          .Holding(64, 2, 20),
      Release("VDRZAX_ReleaseLifPolicyTableRef", VDRZAX_ReleaseLifPolicyTableRef, 546),
  };
}

}  // namespace sweep
