#pragma once

#include "call.h"
#include "datapath/state.h"
#include "requests/input.h"

namespace vdrsim {

// The edge-to-infrastructure mapping.
int Handle(State& state, const Input<"AddE2I">& input);
int Handle(State& state, const Input<"DelE2I">& input);
int Handle(State& state, const Input<"DelAllE2I">& input);
Answer Handle(const State& state, const Input<"GetE2ITable">& input);
Answer Handle(const State& state, const Input<"GetE2IEntry">& input);

// Physical hardware addresses.
int Handle(State& state, const Input<"AddPmac">& input);
int Handle(State& state, const Input<"DelPmac">& input);
Answer Handle(const State& state, const Input<"GetPmac">& input);

// What follows from both, and what is always the same.
Answer Handle(const State& state, const Input<"DumpFLTable">& input);
Answer Handle(const State& state, const Input<"GetLocaleId">& input);

}  // namespace vdrsim
