#include <vdrzax/policy.h>

#include "channel/getters.h"
#include "policy/policy_table_record.h"

namespace {

using namespace vdrzax;

constexpr ListKind<PolicyTableRecord, kPolicyTableRecord> kPolicyTables{
    .cap = 1000, .release = VDRZAX_ReleaseAllPolicyTable};

constexpr TextSlot<416> kTableName;

}  // namespace

int VDRZAX_SetPolicyTable(uint32_t policyKey, const char* tableName, void* result) {
  ClearResult(result);
  return Request{}
      .Put<412>(policyKey)
      .Text(kTableName, tableName)
      .SendForResult(CommandCode::SetPolicyTable, result);
}

int VDRZAX_DelPolicyTable(uint32_t policyKey, void* result) {
  ClearResult(result);
  return Request{}.Put<412>(policyKey).SendForResult(CommandCode::DelPolicyTable, result);
}

int VDRZAX_GetPolicyTable(RecordList** out) {
  return GetList<kPolicyTables>(CommandCode::GetPolicyTable, out, [](Request& /*request*/) {});
}

void VDRZAX_ReleaseAllPolicyTable(RecordList* list) { ReleaseList(list); }
