#pragma once

#include "call.h"
#include "datapath/state.h"
#include "requests/input.h"

namespace vdrsim {

// Policies.
Answer Handle(const State& state, const Input<"GetPolicy">& input);
Answer Handle(State& state, const Input<"SetPolicy">& input);
Answer Handle(State& state, const Input<"DelPolicy">& input);
Answer Handle(const State& state, const Input<"GetPolicyCount">& input);

// Policy tables.
Answer Handle(const State& state, const Input<"GetPolicyTable">& input);
Answer Handle(State& state, const Input<"SetPolicyTable">& input);
Answer Handle(State& state, const Input<"DelPolicyTable">& input);

// LIF policies.
Answer Handle(const State& state, const Input<"GetLifPolicies">& input);
Answer Handle(State& state, const Input<"SetLifPolicy">& input);
Answer Handle(State& state, const Input<"DelLifPolicy">& input);

// The policy tables that LIFs refer to.
Answer Handle(const State& state, const Input<"GetLifPolicyTableRef">& input);
Answer Handle(State& state, const Input<"SetLifPolicyTableRef">& input);
Answer Handle(State& state, const Input<"DelLifPolicyTableRef">& input);

}  // namespace vdrsim
