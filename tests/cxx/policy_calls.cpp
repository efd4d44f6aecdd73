#include "cxx/calls.h"

namespace cxx {

namespace {

vdrzax::Answer answer;

constexpr PolicyTableRefEntry kEntries[]{{1, 2, 3}, {4, 5, 6}};
constexpr std::array<vdrzax::PolicyTableUseSettings, 2> kUses{{{1, 2, 3}, {4, 5, 6}}};

}  // namespace

Rows PolicyCalls() {
  return {
      {"VDRZAX_SetPolicy",
       [] {
         return VDRZAX_SetPolicy(0x11223340U, 0x21223340U, 0x31223340U, 0x41223340U, Scratch());
       },
       FACE(set_policy, 0x11223340U,
            {.policy_arg1 = 0x21223340U, .policy_arg2 = 0x31223340U, .policy_arg3 = 0x41223340U},
            &answer),
       0},
      {"VDRZAX_DelPolicy",
       [] { return VDRZAX_DelPolicy(0x11223340U, 0x21223340U, 0x31223340U, Scratch()); },
       FACE(delete_policy, 0x11223340U, 0x21223340U, 0x31223340U, &answer), 0},
      {"VDRZAX_GetPolicy",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetPolicy(0x11223340U, &out), out, VDRZAX_ReleaseAllPolicy);
       },
       FACE(policies, 0x11223340U), 0},
      {"VDRZAX_GetPolicyCount",
       [] {
         std::uint32_t number = 0;
         return VDRZAX_GetPolicyCount(0x11223340U, &number);
       },
       FACE(policy_count, 0x11223340U), 4},
      {"VDRZAX_SetPolicyTable",
       [] { return VDRZAX_SetPolicyTable(0x11223340U, "text-2", Scratch()); },
       FACE(set_policy_table, 0x11223340U, "text-2", &answer), 0},
      {"VDRZAX_DelPolicyTable", [] { return VDRZAX_DelPolicyTable(0x11223340U, Scratch()); },
       FACE(delete_policy_table, 0x11223340U, &answer), 0},
      {"VDRZAX_GetPolicyTable",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetPolicyTable(&out), out, VDRZAX_ReleaseAllPolicyTable);
       },
       FACE(policy_tables), 0},
      {"VDRZAX_SetLifPolicy",
       [] {
         return VDRZAX_SetLifPolicy(0x1122334, "text-2", 0x31223340U, 0x41223340U, 0x51223340U,
                                    "text-6", "text-7", 0x81223340U, Scratch());
       },
       FACE(set_lif_policy, "text-7",
            {.policy_type = 0x1122334,
             .policy_lif_name = "text-2",
             .route_arg1 = 0x31223340U,
             .route_arg2 = 0x41223340U,
             .route_arg3 = 0x51223340U,
             .if_name = "text-6",
             .route_flags = 0x81223340U},
            &answer),
       0},
      {"VDRZAX_DelLifPolicy",
       [] {
         return VDRZAX_DelLifPolicy(0x1122334, "text-2", 0x31223340U, 0x41223340U, 0x51223340U,
                                    "text-6", "text-7", 0x81223340U, Scratch());
       },
       FACE(delete_lif_policy, "text-7",
            {.policy_type = 0x1122334,
             .policy_lif_name = "text-2",
             .route_arg1 = 0x31223340U,
             .route_arg2 = 0x41223340U,
             .route_arg3 = 0x51223340U,
             .if_name = "text-6",
             .route_flags = 0x81223340U},
            &answer),
       0},
      {"VDRZAX_GetLifPolicies",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetLifPolicies("text-1", 0x21223340U, "text-3", &out), out,
                     VDRZAX_ReleaseRoutes);
       },
       FACE(lif_policies, "text-1", 0x21223340U, "text-3"), 0},
      {"VDRZAX_SetLifPolicyTableRef",
       [] { return VDRZAX_SetLifPolicyTableRef("text-1", "text-2", 2, kEntries, Scratch()); },
       FACE(set_lif_policy_table_ref, "text-1", "text-2", kUses, &answer), 0},
      {"VDRZAX_DelLifPolicyTableRef",
       [] { return VDRZAX_DelLifPolicyTableRef("text-1", "text-2", Scratch()); },
       FACE(delete_lif_policy_table_ref, "text-1", "text-2", &answer), 0},
      {"VDRZAX_GetLifPolicyTableRef",
       [] {
         LifPolicyTableRef* out = nullptr;
         return Done(VDRZAX_GetLifPolicyTableRef("text-1", "text-2", &out), out,
                     VDRZAX_ReleaseLifPolicyTableRef);
       },
       FACE(lif_policy_table_ref, "text-1", "text-2"), sizeof(LifPolicyTableRef)},
      {"VDRZAX_GetLifPolicyTableRef",
       [] {
         LifPolicyTableRef* out = nullptr;
         return Done(VDRZAX_GetLifPolicyTableRef("text-1", "text-2", &out), out,
                     VDRZAX_ReleaseLifPolicyTableRef);
       },
       FACE(find_lif_policy_table_ref, "text-1", "text-2"), sizeof(LifPolicyTableRef)},
      {"VDRZAX_SetPolicy", [] { return VDRZAX_SetPolicy(1, 2, 3, 4, nullptr); },
       FACE(set_policy, 1, {.policy_arg1 = 2, .policy_arg2 = 3, .policy_arg3 = 4}), 0},
      {"VDRZAX_SetLifPolicyTableRef",
       [] { return VDRZAX_SetLifPolicyTableRef("text-1", "text-2", 0, nullptr, nullptr); },
       FACE(set_lif_policy_table_ref, "text-1", "text-2", {}), 0},
      {"VDRZAX_GetLifPolicies",
       [] {
         RecordList* out = nullptr;
         return Done(VDRZAX_GetLifPolicies("text-1", 2, nullptr, &out), out, VDRZAX_ReleaseRoutes);
       },
       FACE(lif_policies, "text-1", 2), 0},
  };
}

}  // namespace cxx
