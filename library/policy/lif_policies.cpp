// A trusted count may take a copy past the array that it begins in; a fortified one would abort.
#undef _FORTIFY_SOURCE

#include <vdrzax/policy.h>

#include "channel/getters.h"
#include "route/route_record.h"

namespace {

using namespace vdrzax;

constexpr uint32_t kTypeThatNamesALif = 4;

constexpr TextSlot<276> kInterfaceName;
constexpr TextSlot<340> kPolicyLifName;

int SendLifPolicy(CommandCode code, int32_t policyType, const char* policyLifName,
                  uint32_t routeArg1, uint32_t routeArg2, uint32_t routeArg3, const char* ifName,
                  const char* instanceName, uint32_t routeFlags, void* result) {
  const bool namesLif = policyType == static_cast<int32_t>(kTypeThatNamesALif);
  if (!instanceName || (namesLif && !policyLifName)) return InvalidArgument();
  ClearResult(result);
  return Request{}
      .Text(kInstanceName, instanceName)
      .Put<408>(policyType)
      .OptionalText(kPolicyLifName, namesLif ? policyLifName : nullptr)
      .Put<256>(routeArg1)
      .Put<260>(routeArg2)
      .Put<268>(routeArg3)
      .Put<272>(routeFlags)
      .OptionalText(kInterfaceName, ifName)
      .SendForResult(code, result);
}

}  // namespace

int VDRZAX_SetLifPolicy(int32_t policyType, const char* policyLifName, uint32_t routeArg1,
                        uint32_t routeArg2, uint32_t routeArg3, const char* ifName,
                        const char* instanceName, uint32_t routeFlags, void* result) {
  return SendLifPolicy(CommandCode::SetLifPolicy, policyType, policyLifName, routeArg1, routeArg2,
                       routeArg3, ifName, instanceName, routeFlags, result);
}

int VDRZAX_DelLifPolicy(int32_t policyType, const char* policyLifName, uint32_t routeArg1,
                        uint32_t routeArg2, uint32_t routeArg3, const char* ifName,
                        const char* instanceName, uint32_t routeFlags, void* result) {
  return SendLifPolicy(CommandCode::DelLifPolicy, policyType, policyLifName, routeArg1, routeArg2,
                       routeArg3, ifName, instanceName, routeFlags, result);
}

int VDRZAX_GetLifPolicies(const char* instanceName, uint32_t policyType, const char* policyLifName,
                          RecordList** out) {
  if (policyType == kTypeThatNamesALif && !policyLifName) return InvalidArgument();
  return GetList<kRoutes>(CommandCode::GetLifPolicies, out, [&](Request& request) {
    request.Text(kInstanceName, instanceName)
        .Put<408>(policyType)
        .OptionalText(kPolicyLifName, policyLifName);
  });
}
