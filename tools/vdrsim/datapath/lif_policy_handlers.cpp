#include <algorithm>
#include <cerrno>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/objects.h"
#include "datapath/policy_handlers.h"
#include "datapath/policy_record.h"
#include "policy/lif_policy_table_ref_record.h"
#include "route/route_record.h"

namespace vdrsim {

namespace {

// The one type of policies that names a LIF. These are the LIF's own, all others the instance's.
constexpr int32_t kOfLif = 4;

// Does `action` on the policies that a command means.
template <typename AnyState, size_t Index, typename Action>
auto OnLifPolicies(AnyState& state, const InputOf<Index>& input, int32_t type,
                   const Action& action) {
  return OnInstance(state, input, [&](auto& instance) {
    if (type != kOfLif) return action(instance.policies);
    return OnCounted(input, instance.lifs, input.ObjectName("policyLifName"),
                     [&](auto& lif) { return action(lif.policies); });
  });
}

template <size_t Index>
Answer ResultOf(int error, const InputOf<Index>& input) {
  if (error != 0) return {.error = error};
  return RecordAnswer<kLifPolicyResult>([&](auto record) {
    const int32_t type = input.Signed("policyType");
    record.Number("type", static_cast<uint32_t>(type))
        .Number("arg1", input.Word("routeArg1"))
        .Number("arg2", input.Word("routeArg2"))
        .Number("arg3", input.Word("routeArg3"))
        .Number("flags", input.Word("routeFlags"))
        .Text("lif", type == kOfLif ? input.Text("policyLifName") : "");
  });
}

// Changes the policy that a command names among those that it means: change(policies, key).
template <size_t Index, typename Change>
Answer ChangeLifPolicy(State& state, const InputOf<Index>& input, const Change& change) {
  const auto ifName = input.OptionalName("ifName");
  if (!ifName) return {.error = EINVAL};
  const LifPolicyKey key{.type = input.Signed("policyType"),
                         .arg1 = input.Word("routeArg1"),
                         .arg2 = input.Word("routeArg2"),
                         .arg3 = input.Word("routeArg3"),
                         .flags = input.Word("routeFlags"),
                         .ifName = std::string(*ifName)};
  return OnLifPolicies(state, input, key.type, [&](LifPolicies& policies) {
    return ResultOf(change(policies, key), input);
  });
}

struct Wanted {
  int32_t type;
  std::string name;

  // A LIF's list is its own already; any other is narrowed by a name.
  bool Includes(const LifPolicyKey& policy) const {
    return policy.type == type && (type == kOfLif || name.empty() || policy.ifName == name);
  }
};

using Rows = std::vector<const LifPolicyKey*>;

Rows Select(const LifPolicies& policies, const Wanted& wanted) {
  Rows rows;
  for (const auto& [key, policy] : policies) {
    if (wanted.Includes(key)) rows.push_back(&key);
  }
  return rows;
}

void ShowLifPolicy(RecordWriter<vdrzax::kRouteRecord> record, const LifPolicyKey& policy,
                   std::string_view lif) {
  record.Number("routeWord0", policy.arg1)
      .Number("routeWord1", policy.arg2)
      .Number("routeWord2", policy.arg3)
      .Number("routeWord3", policy.flags)
      .Number("routeQword", static_cast<uint32_t>(policy.type));
  record.Append<"nextHops">().Text("hopName", policy.ifName);
  if (policy.type == kOfLif) record.Append<"nextHops">().Text("hopName", lif);
}

template <size_t Index>
Answer RefResultOf(const InputOf<Index>& input) {
  return RecordAnswer<kRefResult>([&](auto record) { record.Text("lif", input.Text("lifName")); });
}

void ShowRef(RecordWriter<vdrzax::kLifPolicyTableRef> record, std::string_view lif,
             const PolicyTableRef& ref) {
  record.Text("refName", lif);
  for (const auto& numbers : ref.entries) {
    record.Append<"refEntries">()
        .Number("qword0", numbers[0])
        .Number("qword8", numbers[1])
        .Number("qword16", numbers[2]);
  }
}

}  // namespace

Answer Handle(const State& state, const Input<"GetLifPolicies">& input) {
  const auto name = input.OptionalName("policyLifName");
  if (!name) return {.error = EINVAL};
  const Wanted wanted{.type = static_cast<int32_t>(input.Word("policyType")),
                      .name = std::string(*name)};
  return OnLifPolicies(state, input, wanted.type, [&](const LifPolicies& policies) {
    return SelectionAnswer<vdrzax::kRouteRecord>(
        policies, [wanted](const LifPolicies& all) { return Select(all, wanted); },
        [lif = wanted.name](auto record, const LifPolicyKey* policy) {
          ShowLifPolicy(record, *policy, lif);
        });
  });
}

Answer Handle(State& state, const Input<"SetLifPolicy">& input) {
  return ChangeLifPolicy(state, input, [](LifPolicies& policies, const LifPolicyKey& key) {
    return policies.Set(key, kMostLifPolicies, [](LifPolicy&) { return 0; });
  });
}

Answer Handle(State& state, const Input<"DelLifPolicy">& input) {
  return ChangeLifPolicy(state, input, [](LifPolicies& policies, const LifPolicyKey& key) {
    return policies.Delete(key);
  });
}

Answer Handle(const State& state, const Input<"GetLifPolicyTableRef">& input) {
  return OnLif(state, input, [&](const Lif& lif) {
    if (!lif.policyTableRef) return Answer{.error = ENOENT};
    return RecordAnswer<vdrzax::kLifPolicyTableRef>(ShowRef, input.Text("lifName"),
                                                    *lif.policyTableRef);
  });
}

Answer Handle(State& state, const Input<"SetLifPolicyTableRef">& input) {
  return OnLif(state, input, [&](Lif& lif) {
    const uint16_t count = input.Half("refCount");
    if (count > kMostPolicyTableRefs) return Answer{.error = EINVAL};
    PolicyTableRef ref;
    ref.entries.resize(count);
    const auto bytes = std::as_writable_bytes(std::span(ref.entries));
    std::ranges::copy(input.Bytes("bytes").first(bytes.size()), bytes.begin());
    lif.policyTableRef = std::move(ref);
    return RefResultOf(input);
  });
}

Answer Handle(State& state, const Input<"DelLifPolicyTableRef">& input) {
  return OnLif(state, input, [&](Lif& lif) {
    if (!lif.policyTableRef) return Answer{.error = ENOENT};
    lif.policyTableRef.reset();
    return RefResultOf(input);
  });
}

}  // namespace vdrsim
