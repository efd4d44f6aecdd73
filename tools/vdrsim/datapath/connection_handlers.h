#pragma once

#include "call.h"
#include "datapath/state.h"
#include "requests/input.h"

namespace vdrsim {

// Connections.
int Handle(State& state, const Input<"PlumbVdrConnection">& input);
int Handle(State& state, const Input<"UnPlumbVdrConnection">& input);
Answer Handle(const State& state, const Input<"GetConnections">& input);
Answer Handle(const State& state, const Input<"GetConnection">& input);
Answer Handle(const State& state, const Input<"GetVMAC">& input);
Answer Handle(const State& state, const Input<"VDRDevCheckConnDeletion">& input);

// The control plane.
int Handle(State& state, const Input<"CPActivate">& input);
int Handle(State& state, const Input<"SetCPIp">& input);
int Handle(State& state, const Input<"SetVdrInstanceCPSyncState">& input);
Answer Handle(const State& state, const Input<"GetVdrInstanceCPSyncState">& input);

}  // namespace vdrsim
