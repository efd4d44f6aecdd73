#include <vdrzax/policy.h>

#include <cstring>

#include "channel/getters.h"
#include "policy/policy_record.h"

namespace {

using namespace vdrzax;

constexpr ListKind<PolicyRecord, kPolicyRecord> kPolicies{.cap = 1000,
                                                          .release = VDRZAX_ReleaseAllPolicy};

}  // namespace

int VDRZAX_SetPolicy(uint32_t policyKey, uint32_t policyArg1, uint32_t policyArg2,
                     uint32_t policyArg3, void* result) {
  ClearResult(result);
  return Request{}
      .Put<256>(policyArg1)
      .Put<260>(policyArg2)
      .Put<404>(policyArg3)
      .Put<412>(policyKey)
      .SendForResult(CommandCode::SetPolicy, result);
}

int VDRZAX_DelPolicy(uint32_t policyKey, uint32_t policyArg1, uint32_t policyArg2, void* result) {
  ClearResult(result);
  return Request{}
      .Put<256>(policyArg1)
      .Put<260>(policyArg2)
      .Put<412>(policyKey)
      .SendForResult(CommandCode::DelPolicy, result);
}

int VDRZAX_GetPolicy(uint32_t policyKey, RecordList** out) {
  return GetList<kPolicies>(CommandCode::GetPolicy, out,
                            [&](Request& request) { request.Put<412>(policyKey); });
}

int VDRZAX_GetPolicyCount(uint32_t policyKey, uint32_t* count) {
  void* reply = std::malloc(sizeof *count);
  if (!reply) return OutOfMemory();
  uint32_t length = sizeof *count;
  if (Request{}.Put<412>(policyKey).Receive(CommandCode::GetPolicyCount, reply, length) != 0) {
    std::free(reply);
    return -1;
  }
  // Agents that count allocations expect a short count, and nothing else, to keep its four bytes.
  if (static_cast<int32_t>(length) < static_cast<int32_t>(sizeof *count)) return ShortReply();
  std::memcpy(count, reply, sizeof *count);
  std::free(reply);
  return 0;
}

void VDRZAX_ReleaseAllPolicy(RecordList* list) { ReleaseList(list); }
