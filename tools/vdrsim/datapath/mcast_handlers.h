#pragma once

#include "call.h"
#include "datapath/state.h"
#include "requests/input.h"

namespace vdrsim {

// Receivers of multicast groups.
int Handle(State& state, const Input<"AddMRoutingLocalRcvrs">& input);
int Handle(State& state, const Input<"DelMRoutingLocalRcvrs">& input);
Answer Handle(const State& state, const Input<"GetMRoutingLocalRcvrs">& input);
int Handle(State& state, const Input<"AddMRoutingRemoteRcvrs">& input);
int Handle(State& state, const Input<"DelMRoutingRemoteRcvrs">& input);
Answer Handle(const State& state, const Input<"GetMRoutingRemoteRcvrs">& input);

// What follows from them.
Answer Handle(const State& state, const Input<"GetMRoutingDomain">& input);
Answer Handle(const State& state, const Input<"GetMRoutingAllMcastGroups">& input);
Answer Handle(const State& state, const Input<"GetMRoutingReplicationIP">& input);

// The multicast router of an instance.
int Handle(State& state, const Input<"AddMRoutingMRouter">& input);
int Handle(State& state, const Input<"DelMRoutingMRouter">& input);
Answer Handle(const State& state, const Input<"GetMRoutingMRouterIP">& input);

}  // namespace vdrsim
