#include <vdrzax/policy.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "commands.h"
#include "commands/reading.h"
#include "policy/lif_policy_table_ref_record.h"
#include "policy/policy_record.h"
#include "policy/policy_table_record.h"
#include "route/route_record.h"

namespace vdrctl {

namespace {

using vdrzax::kLifPolicyTableRef;
using vdrzax::kPolicyRecord;
using vdrzax::kPolicyTableRecord;
using vdrzax::kRouteRecord;

constexpr Object kObjects[] = {
    {"policy", "Policies, known by a key"},
    {"policy-table", "Policy tables, known by a key"},
    {"lif-policy", "Policies of the LIFs of a router instance"},
    {"lif-policy-table", "References of LIFs to policy tables"},
};

constexpr const char* kRouteColumns[] = {"routeWord0", "routeWord1", "routeWord2", "routeWord3",
                                         "routeByte",  "routeQword", "nextHops"};

constexpr Parameter kKey = U32("KEY", "Number that the policies are known by");
constexpr Parameter kTableKey = U32("KEY", "Number that the table is known by");
constexpr Parameter kFirst = U32("--first N", "Word with a meaning of the kernel's");
constexpr Parameter kSecond = U32("--second N", "Word with a meaning of the kernel's");

constexpr Parameter kType =
    NumberOf<int32_t>("TYPE", "Type of the policy; 4 is the one that names a LIF");
constexpr Parameter kPolicyLif = Name("--lif LIF", "Name of the LIF; required with type 4");
constexpr Parameter kDestination =
    Ipv4Prefix("PREFIX", "Destination and netmask: the first two words of a route");
constexpr Parameter kGateway = Ipv4Address("--gateway ADDRESS", "The third word of a route");
constexpr Parameter kInterface = Name("--interface LIF", "Name of the interface of the route");
constexpr Parameter kFlags = U32("--flags N", "Word with a meaning of the kernel's");

constexpr std::size_t kMostTables = 20;

// Three numbers with colons between them for each table, and commas between the tables: the words of
// its entry. Empty when it is not just this.
std::vector<PolicyTableRefEntry> ParseEntries(std::string_view text) {
  std::vector<PolicyTableRefEntry> entries;
  for (const std::string_view table : SplitAt(text, ',')) {
    const auto words = ParseNumbers(table, ':', UINT64_MAX);
    if (words.size() != 3 || entries.size() == kMostTables) return {};
    entries.push_back({words[0], words[1], words[2]});
  }
  return entries;
}

constexpr Parameter kEntries =
    FormedText("TABLES", 4096, "Up to 20 tables: the three words of each, as 1:2:3,4:5:6",
               "up to 20 times three numbers, as 1:2:3,4:5:6",
               [](std::string_view text) { return !ParseEntries(text).empty(); });

int SetTables(const char* instance, const char* lif, const char* tables, const char* file) {
  const auto entries = ParseEntries(tables);
  return SendForAnswer(file, [&](void* answer) {
    return VDRZAX_SetLifPolicyTableRef(instance, lif, static_cast<uint16_t>(entries.size()),
                                       entries.data(), answer);
  });
}

constexpr Command kCommands[] = {
    {"policy",
     "list",
     "List the policies of a key",
     {"VDRZAX_GetPolicy"},
     {119},
     {kKey},
     Lists<VDRZAX_GetPolicy, VDRZAX_ReleaseAllPolicy>,
     ListReply<kPolicyRecord>()},
    {"policy",
     "count",
     "Show the number of policies of a key",
     {"VDRZAX_GetPolicyCount"},
     {122},
     {kKey},
     ShowsNumber<VDRZAX_GetPolicyCount>,
     NumberReply("count")},
    {"policy",
     "set",
     "Add a policy, or replace all of it: what is not given becomes 0",
     {"VDRZAX_SetPolicy"},
     {120},
     {kKey, kFirst, kSecond, U32("--third N", "Word with a meaning of the kernel's"), kAnswer},
     RunAnswered<VDRZAX_SetPolicy>},
    {"policy",
     "delete",
     "Delete a policy",
     {"VDRZAX_DelPolicy"},
     {121},
     {kKey, kFirst, kSecond, kAnswer},
     RunAnswered<VDRZAX_DelPolicy>},
    {"policy-table",
     "list",
     "List all policy tables",
     {"VDRZAX_GetPolicyTable"},
     {143},
     {},
     Lists<VDRZAX_GetPolicyTable, VDRZAX_ReleaseAllPolicyTable>,
     ListReply<kPolicyTableRecord>()},
    {"policy-table",
     "set",
     "Add a policy table, or replace it",
     {"VDRZAX_SetPolicyTable"},
     {144},
     {kTableKey, Name("NAME", "Name of the table"), kAnswer},
     RunAnswered<VDRZAX_SetPolicyTable>},
    {"policy-table",
     "delete",
     "Delete a policy table",
     {"VDRZAX_DelPolicyTable"},
     {145},
     {kTableKey, kAnswer},
     RunAnswered<VDRZAX_DelPolicyTable>},
    {"lif-policy",
     "list",
     "List the LIF policies of a router instance",
     {"VDRZAX_GetLifPolicies"},
     {140},
     {kInstance, U32("TYPE", "Type of the policies; 4 is the one that names a LIF"), kPolicyLif},
     Lists<VDRZAX_GetLifPolicies, VDRZAX_ReleaseRoutes>,
     ListReply<kRouteRecord>(kRouteColumns)},
    {"lif-policy",
     "set",
     "Add a LIF policy, or replace all of it: what is not given becomes 0 or empty",
     {"VDRZAX_SetLifPolicy"},
     {141},
     {kInstance, kType, kDestination, kPolicyLif, kGateway, kInterface, kFlags, kAnswer},
     Run<[](const char* instance, int32_t type, Prefix prefix, const char* lif, uint32_t gateway,
            const char* interface, uint32_t flags, const char* file) {
       return SendForAnswer(file, [&](void* answer) {
         return VDRZAX_SetLifPolicy(type, lif, prefix.address, prefix.mask, gateway, interface,
                                    instance, flags, answer);
       });
     }>},
    {"lif-policy",
     "delete",
     "Delete a LIF policy",
     {"VDRZAX_DelLifPolicy"},
     {142},
     {kInstance, kType, kDestination, kPolicyLif, kGateway, kInterface, kFlags, kAnswer},
     Run<[](const char* instance, int32_t type, Prefix prefix, const char* lif, uint32_t gateway,
            const char* interface, uint32_t flags, const char* file) {
       return SendForAnswer(file, [&](void* answer) {
         return VDRZAX_DelLifPolicy(type, lif, prefix.address, prefix.mask, gateway, interface,
                                    instance, flags, answer);
       });
     }>},
    {"lif-policy-table",
     "show",
     "Show the policy tables that a LIF refers to",
     {"VDRZAX_GetLifPolicyTableRef"},
     {146},
     {kInstance, kLif},
     Shows<LifPolicyTableRef, VDRZAX_GetLifPolicyTableRef, VDRZAX_ReleaseLifPolicyTableRef,
           kLifPolicyTableRef>,
     RecordReply<kLifPolicyTableRef>()},
    {"lif-policy-table",
     "set",
     "Set the policy tables that a LIF refers to",
     {"VDRZAX_SetLifPolicyTableRef"},
     {147},
     {kInstance, kLif, kEntries, kAnswer},
     Run<SetTables>},
    {"lif-policy-table",
     "delete",
     "Delete the reference of a LIF to policy tables",
     {"VDRZAX_DelLifPolicyTableRef"},
     {148},
     {kInstance, kLif, kAnswer},
     RunAnswered<VDRZAX_DelLifPolicyTableRef>},
};

}  // namespace

constinit const Family kPolicyFamily{kObjects, kCommands};

}  // namespace vdrctl
