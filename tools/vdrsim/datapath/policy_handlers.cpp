#include "datapath/policy_handlers.h"

#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/objects.h"
#include "datapath/policy_record.h"
#include "policy/policy_record.h"
#include "policy/policy_table_record.h"

namespace vdrsim {

namespace {

// A key of which there is no policy has none, which is no error.
Policies PoliciesOf(const State& state, uint32_t key) {
  const Policies* policies = state.policies.Find(key);
  return policies ? *policies : Policies{};
}

template <size_t Index>
PolicyArgs ArgsOf(const InputOf<Index>& input) {
  return {.arg1 = input.Word("policyArg1"), .arg2 = input.Word("policyArg2")};
}

Answer ResultOf(int error, uint32_t key, const PolicyArgs& args = {}) {
  if (error != 0) return {.error = error};
  return RecordAnswer<kPolicyResult>([&](auto record) {
    record.Number("key", key).Number("arg1", args.arg1).Number("arg2", args.arg2);
  });
}

}  // namespace

Answer Handle(const State& state, const Input<"GetPolicy">& input) {
  const uint32_t key = input.Word("policyKey");
  return TableAnswer<vdrzax::kPolicyRecord>(
      PoliciesOf(state, key), [key](auto record, const PolicyArgs& args, const Policy& policy) {
        record.Number("policyWord0", key)
            .Number("policyWord1", args.arg1)
            .Number("policyWord2", args.arg2)
            .Number("policyWord3", policy.arg3);
      });
}

Answer Handle(State& state, const Input<"SetPolicy">& input) {
  const uint32_t key = input.Word("policyKey");
  const PolicyArgs args = ArgsOf(input);
  const auto set = [&](Policy& policy) {
    policy.arg3 = input.Word("policyArg3");
    return 0;
  };
  // Any number of keys can have policies: there is no list of all of them.
  return ResultOf(
      state.policies.Set(
          key, kNoCap, [&](Policies& policies) { return policies.Set(args, kMostPolicies, set); }),
      key, args);
}

Answer Handle(State& state, const Input<"DelPolicy">& input) {
  const uint32_t key = input.Word("policyKey");
  const PolicyArgs args = ArgsOf(input);
  const auto deleteOne = [&](Policies& policies) { return policies.Delete(args); };
  return ResultOf(DeleteWithin(state.policies, key, deleteOne), key, args);
}

Answer Handle(const State& state, const Input<"GetPolicyCount">& input) {
  return NumberAnswer(static_cast<uint32_t>(PoliciesOf(state, input.Word("policyKey")).size()));
}

Answer Handle(const State& state, const Input<"GetPolicyTable">&) {
  return TableAnswer<vdrzax::kPolicyTableRecord>(
      state.policyTables, [](auto record, uint32_t key, const PolicyTable& table) {
        record.Number("tableKey", key).Text("tableName", table.name);
      });
}

Answer Handle(State& state, const Input<"SetPolicyTable">& input) {
  const uint32_t key = input.Word("policyKey");
  return ResultOf(state.policyTables.Set(key, kMostPolicyTables,
                                         [&](PolicyTable& table) {
                                           table.name = input.Text("tableName");
                                           return 0;
                                         }),
                  key);
}

// The policies of the same key stay.
Answer Handle(State& state, const Input<"DelPolicyTable">& input) {
  const uint32_t key = input.Word("policyKey");
  return ResultOf(state.policyTables.Delete(key), key);
}

}  // namespace vdrsim
