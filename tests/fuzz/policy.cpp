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

const getters::OtherGetter& kCount = getters::Other("VDRZAX_GetPolicyCount");

getters::ListGetter PoliciesOfALifWithoutName() {
  getters::ListGetter getter = getters::List("VDRZAX_GetLifPolicies");
  getter.call = [](RecordList** out) { return VDRZAX_GetLifPolicies("edge-1", 1, nullptr, out); };
  getter.block = wire::Block().Text(0, "edge-1").U32(408, 1);
  return getter;
}

void PolicyCount(const Case& input) {
  constexpr uint32_t kBefore = 0x5C5C5C5C;
  const device::Reply reply = input.Answer(static_cast<uint32_t>(kCount.size));
  uint32_t count = kBefore;
  const Outcome outcome = Call(input, reply, [&] { return VDRZAX_GetPolicyCount(7, &count); });
  if (outcome.result != 0) Require(count == kBefore, "a failure leaves the variable");
  if (input.failingAllocation == 1) {
    RequireNothingSent();
    return RequireFailure(outcome, ENOMEM);
  }
  RequireSent(input, kCount);
  if (input.CommandFails()) return RequireFailure(outcome, input.CommandError());
  if (SignedLength(reply) < static_cast<int32_t>(kCount.size)) {
    RequireFailure(outcome, EBADMSG);
    return RequireLost({kCount.size});
  }
  RequireSuccess(outcome);
  RequireWritten(&count, sizeof count, reply);
}

}  // namespace

const std::vector<Subject>& Subjects() {
  static const auto subjects =
      SubjectsOf(getters::Policy(),
                 {{"VDRZAX_GetPolicy", Expected<kPolicyRecord>},
                  {"VDRZAX_GetPolicyTable", Expected<kPolicyTableRecord>},
                  {"VDRZAX_GetLifPolicies", Expected<kRouteRecord>},
                  {"VDRZAX_GetLifPolicyTableRef", Expected<kLifPolicyTableRef>}},
                 {{kCount.name, PolicyCount}}, {PoliciesOfALifWithoutName()});
  return subjects;
}
