#include <vdrzax/policy.h>

#include "support/getters/table.h"

namespace getters {

using wire::Block;

namespace {

// A command that changes something, with 88 bytes for the kernel's answer.
RawGetter Change(const char* name, int (*call)(void* result), unsigned long code, Block block) {
  return {.name = name,
          .call = call,
          .code = code,
          .block = std::move(block),
          .size = 88,
          .into = Into::ClearedBuffer};
}

constexpr PolicyTableRefEntry kEntries[] = {{0x0101, 0x0202, 0x0303}, {0x0404, 0x0505, 0x0606}};

Block LifPolicyBlock() {
  return Block()
      .Text(0, "edge-1")
      .U32(256, 0x21222324)
      .U32(260, 0x31323334)
      .U32(268, 0x41424344)
      .U32(272, 0x51525354)
      .Text(276, "port-1")
      .Text(340, "lif-1")
      .U32(408, 4);
}

template <typename Function>
int ChangeLifPolicy(Function function, void* result) {
  return function(4, "lif-1", 0x21222324, 0x31323334, 0x41424344, "port-1", "edge-1", 0x51525354,
                  result);
}

}  // namespace

const Family& Policy() {
  static const Family family{
      .lists = {{.name = "VDRZAX_GetPolicy",
                 .call = [](auto** out) { return VDRZAX_GetPolicy(0x41424344, out); },
                 .release = VDRZAX_ReleaseAllPolicy,
                 .code = 119,
                 .block = Block().U32(412, 0x41424344),
                 .size = 28,
                 .cap = 1000},
                {.name = "VDRZAX_GetPolicyTable",
                 .call = VDRZAX_GetPolicyTable,
                 .release = VDRZAX_ReleaseAllPolicyTable,
                 .code = 143,
                 .size = 72,
                 .cap = 1000},
                {.name = "VDRZAX_GetLifPolicies",
                 .call =
                     [](auto** out) { return VDRZAX_GetLifPolicies("edge-1", 4, "lif-1", out); },
                 .release = VDRZAX_ReleaseRoutes,
                 .code = 140,
                 .block = Block().Text(0, "edge-1").Text(340, "lif-1").U32(408, 4),
                 .size = 668,
                 .cap = 20000,
                 .count = {.offset = 17, .width = 1, .most = 8}}},
      .records = {{.name = "VDRZAX_GetLifPolicyTableRef",
                   .call = Get<LifPolicyTableRef>([](auto** out) {
                     return VDRZAX_GetLifPolicyTableRef("edge-1", "lif-1", out);
                   }),
                   .release = Free(VDRZAX_ReleaseLifPolicyTableRef),
                   .code = 146,
                   .block = Block().Text(0, "edge-1").Text(384, "lif-1"),
                   .size = 546,
                   .count = {.offset = 64, .width = 2, .most = 20}}},
      .raws =
          {Change(
               "VDRZAX_SetPolicy",
               [](void* result) {
                 return VDRZAX_SetPolicy(0x11121314, 0x21222324, 0x31323334, 0x41424344, result);
               },
               120,
               Block()
                   .U32(256, 0x21222324)
                   .U32(260, 0x31323334)
                   .U32(404, 0x41424344)
                   .U32(412, 0x11121314)),
           Change(
               "VDRZAX_DelPolicy",
               [](void* result) {
                 return VDRZAX_DelPolicy(0x11121314, 0x21222324, 0x31323334, result);
               },
               121, Block().U32(256, 0x21222324).U32(260, 0x31323334).U32(412, 0x11121314)),
           Change(
               "VDRZAX_SetPolicyTable",
               [](void* result) { return VDRZAX_SetPolicyTable(0x11121314, "table-1", result); },
               144, Block().U32(412, 0x11121314).Text(416, "table-1")),
           Change(
               "VDRZAX_DelPolicyTable",
               [](void* result) { return VDRZAX_DelPolicyTable(0x11121314, result); }, 145,
               Block().U32(412, 0x11121314)),
           Change(
               "VDRZAX_SetLifPolicy",
               [](void* result) { return ChangeLifPolicy(VDRZAX_SetLifPolicy, result); }, 141,
               LifPolicyBlock()),
           Change(
               "VDRZAX_DelLifPolicy",
               [](void* result) { return ChangeLifPolicy(VDRZAX_DelLifPolicy, result); }, 142,
               LifPolicyBlock()),
           Change(
               "VDRZAX_SetLifPolicyTableRef",
               [](void* result) {
                 return VDRZAX_SetLifPolicyTableRef("edge-1", "lif-1", 2, kEntries, result);
               },
               147,
               Block()
                   .Text(0, "edge-1")
                   .Text(384, "lif-1")
                   .U16(480, 2)
                   .U64(484, 0x0101)
                   .U64(492, 0x0202)
                   .U64(500, 0x0303)
                   .U64(508, 0x0404)
                   .U64(516, 0x0505)
                   .U64(524, 0x0606)),
           Change(
               "VDRZAX_DelLifPolicyTableRef",
               [](void* result) { return VDRZAX_DelLifPolicyTableRef("edge-1", "lif-1", result); },
               148, Block().Text(0, "edge-1").Text(384, "lif-1"))},
      .others = {{.name = "VDRZAX_GetPolicyCount", .code = 122, .size = 4}}};
  return family;
}

}  // namespace getters
