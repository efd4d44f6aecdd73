#include <vdrzax/policy.h>

#include <cerrno>

#include "getters.h"
#include "policy/lif_policy_table_ref_record.h"
#include "policy/policy_record.h"
#include "policy/policy_table_record.h"
#include "require.h"
#include "route/route_record.h"

namespace {

using namespace vdrzax;

Subject LifPolicies(int (*get)(RecordList** out)) {
  return ListGetter({.code = 140,
                     .size = 668,
                     .cap = 20000,
                     .expected = Expected<kRouteRecord>,
                     .trust = TrustCounts<668, 17, uint8_t, 8>},
                    get, VDRZAX_ReleaseRoutes);
}

Subject Answered(uint32_t code, int (*change)(void* result)) {
  return RawGetter(code, 88, change, true);
}

void PolicyCount(const Case& input) {
  constexpr uint32_t kBefore = 0x5C5C5C5C;
  const device::Reply reply = input.Answer(4);
  uint32_t count = kBefore;
  const Outcome outcome = Call(input, reply, [&] { return VDRZAX_GetPolicyCount(7, &count); });
  if (outcome.result != 0) Require(count == kBefore, "a failure leaves the variable");
  if (input.failingAllocation == 1) {
    RequireNothingSent();
    return RequireFailure(outcome, ENOMEM);
  }
  RequireSent(input, 122, 4);
  if (input.CommandFails()) return RequireFailure(outcome, input.CommandError());
  if (SignedLength(reply) < 4) {
    RequireFailure(outcome, EBADMSG);
    return RequireLost({4});
  }
  RequireSuccess(outcome);
  RequireWritten(&count, sizeof count, reply);
}

}  // namespace

std::span<const Subject> Subjects() {
  static const Subject subjects[] = {
      ListGetter(
          {.code = 119, .size = 28, .cap = 1000, .expected = Expected<kPolicyRecord>},
          [](RecordList** out) { return VDRZAX_GetPolicy(7, out); }, VDRZAX_ReleaseAllPolicy),
      PolicyCount,
      ListGetter({.code = 143, .size = 72, .cap = 1000, .expected = Expected<kPolicyTableRecord>},
                 VDRZAX_GetPolicyTable, VDRZAX_ReleaseAllPolicyTable),
      LifPolicies(
          [](RecordList** out) { return VDRZAX_GetLifPolicies("edge-1", 1, nullptr, out); }),
      LifPolicies(
          [](RecordList** out) { return VDRZAX_GetLifPolicies("edge-1", 4, "lif-1", out); }),
      // The array of entries ends with the record.
      RecordGetter<LifPolicyTableRef>(
          {.code = 146,
           .size = 546,
           .expected = Expected<kLifPolicyTableRef>,
           .trust = TrustCounts<546, 64, uint16_t, 20>},
          [](LifPolicyTableRef** out) {
            return VDRZAX_GetLifPolicyTableRef("edge-1", "lif-1", out);
          },
          VDRZAX_ReleaseLifPolicyTableRef),
      Answered(120, [](void* result) { return VDRZAX_SetPolicy(7, 1, 2, 3, result); }),
      Answered(121, [](void* result) { return VDRZAX_DelPolicy(7, 1, 2, result); }),
      Answered(144, [](void* result) { return VDRZAX_SetPolicyTable(7, "table-1", result); }),
      Answered(145, [](void* result) { return VDRZAX_DelPolicyTable(7, result); }),
      Answered(141,
               [](void* result) {
                 return VDRZAX_SetLifPolicy(4, "lif-1", 1, 2, 3, "lif-2", "edge-1", 4, result);
               }),
      Answered(142,
               [](void* result) {
                 return VDRZAX_DelLifPolicy(4, "lif-1", 1, 2, 3, "lif-2", "edge-1", 4, result);
               }),
      Answered(147,
               [](void* result) {
                 const PolicyTableRefEntry entries[20] = {};
                 return VDRZAX_SetLifPolicyTableRef("edge-1", "lif-1", 20, entries, result);
               }),
      Answered(148,
               [](void* result) { return VDRZAX_DelLifPolicyTableRef("edge-1", "lif-1", result); }),
  };
  return subjects;
}
