// A trusted count may take a copy past the array that it begins in; a fortified one would abort.
#undef _FORTIFY_SOURCE

#include <vdrzax/policy.h>

#include "channel/getters.h"
#include "policy/lif_policy_table_ref_record.h"

using namespace vdrzax;

int VDRZAX_SetLifPolicyTableRef(const char* instanceName, const char* lifName, uint16_t refCount,
                                const PolicyTableRefEntry* entries, void* result) {
  if (!instanceName || !lifName) return InvalidArgument();
  ClearResult(result);
  return Request{}
      .Text(kLifName, lifName)
      .Text(kInstanceName, instanceName)
      .Put<480>(refCount)
      .CountedBytes<484>(entries, refCount * sizeof *entries)
      .SendForResult(CommandCode::SetLifPolicyTableRef, result);
}

int VDRZAX_DelLifPolicyTableRef(const char* instanceName, const char* lifName, void* result) {
  if (!instanceName || !lifName) return InvalidArgument();
  ClearResult(result);
  return Request{}
      .Text(kLifName, lifName)
      .Text(kInstanceName, instanceName)
      .SendForResult(CommandCode::DelLifPolicyTableRef, result);
}

int VDRZAX_GetLifPolicyTableRef(const char* instanceName, const char* lifName,
                                LifPolicyTableRef** out) {
  if (!instanceName || !lifName) return InvalidArgument();
  return GetRecord<DecodeRecord<kLifPolicyTableRef>, VDRZAX_ReleaseLifPolicyTableRef>(
      CommandCode::GetLifPolicyTableRef, out,
      [&](Request& request) { request.Text(kInstanceName, instanceName).Text(kLifName, lifName); });
}

void VDRZAX_ReleaseLifPolicyTableRef(LifPolicyTableRef* record) { std::free(record); }
