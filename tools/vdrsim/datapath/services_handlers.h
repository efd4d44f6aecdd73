#pragma once

#include "call.h"
#include "datapath/state.h"
#include "requests/input.h"

namespace vdrsim {

// Full-sync save.
Answer Handle(State& state, const Input<"PerformFullSyncSave">& input);
Answer Handle(const State& state, const Input<"GetFullSyncSaveStatus">& input);

// Software RSS.
Answer Handle(const State& state, const Input<"SoftRSSGetStats">& input);
int Handle(State& state, const Input<"SoftRSSStatsReset">& input);
Answer Handle(const State& state, const Input<"SoftRSSGetTunables">& input);
int Handle(State& state, const Input<"SoftRSSSetTunables">& input);
Answer Handle(const State& state, const Input<"SoftRSSGetIndTable">& input);
int Handle(State& state, const Input<"SoftRSSTableSet">& input);

// Public addresses of virtual machines.
int Handle(State& state, const Input<"AddVMPublicIP">& input);
int Handle(State& state, const Input<"DelVMPublicIP">& input);
int Handle(State& state, const Input<"DelVMPublicIPEntry">& input);
int Handle(State& state, const Input<"DelAllVMPublicIPEntries">& input);
Answer Handle(const State& state, const Input<"GetVMPublicIPEntry">& input);
Answer Handle(const State& state, const Input<"GetVMPublicIPTable">& input);

}  // namespace vdrsim
