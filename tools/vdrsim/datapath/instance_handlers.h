#pragma once

#include "call.h"
#include "datapath/state.h"
#include "requests/input.h"

namespace vdrsim {

// Instances.
Answer Handle(const State& state, const Input<"GetInstances">& input);
Answer Handle(const State& state, const Input<"GetInstance">& input);
int Handle(State& state, const Input<"SetVdrInstance">& input);
int Handle(State& state, const Input<"DelVdrInstance">& input);
int Handle(State& state, const Input<"SetVdrInstanceTunables">& input);

// Counters of an instance, and of the datapath as a whole.
Answer Handle(const State& state, const Input<"GetVdrInstanceCPStats">& input);
int Handle(State& state, const Input<"ResetVdrInstanceCPStats">& input);
Answer Handle(const State& state, const Input<"GetVdrDiStats">& input);
int Handle(State& state, const Input<"ResetVdrDiStats">& input);

// Settings.
Answer Handle(const State& state, const Input<"GetLogLevel">& input);
int Handle(State& state, const Input<"SetLogLevel">& input);
Answer Handle(const State& state, const Input<"GetExtendedLogLevel">& input);
int Handle(State& state, const Input<"SetExtendedLogLevel">& input);
Answer Handle(const State& state, const Input<"GetStatsLevel">& input);
int Handle(State& state, const Input<"SetStatsLevel">& input);
int Handle(State& state, const Input<"PreUnload">& input);
Answer Handle(const State& state, const Input<"GetTxDispQueueSize">& input);
int Handle(State& state, const Input<"SetTxDispQueueSize">& input);

}  // namespace vdrsim
