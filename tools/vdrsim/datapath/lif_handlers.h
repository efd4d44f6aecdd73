#pragma once

#include "call.h"
#include "datapath/state.h"
#include "requests/input.h"

namespace vdrsim {

// LIFs.
int Handle(State& state, const Input<"SetLif">& input);
int Handle(State& state, const Input<"DelLif">& input);
Answer Handle(const State& state, const Input<"GetLif">& input);
Answer Handle(const State& state, const Input<"GetLifs">& input);
Answer Handle(const State& state, const Input<"GetExtVlanLifs">& input);

// Bridge LIFs.
int Handle(State& state, const Input<"SetBridgeLif", 57>& input);
int Handle(State& state, const Input<"SetBridgeLif", 58>& input);
Answer Handle(const State& state, const Input<"GetBridgeLif">& input);
Answer Handle(const State& state, const Input<"GetBridgeLifs">& input);

// Their addresses.
int Handle(State& state, const Input<"SetLifIp">& input);
int Handle(State& state, const Input<"DelLifIp">& input);
int Handle(State& state, const Input<"SetLifIpv6">& input);
int Handle(State& state, const Input<"DelLifIpv6">& input);

// Their settings.
int Handle(State& state, const Input<"SetLifDIIp">& input);
int Handle(State& state, const Input<"SetLifVxlanMulticastIp">& input);
int Handle(State& state, const Input<"SetLifVxlanCP">& input);
int Handle(State& state, const Input<"DelLifVxlanCP">& input);
int Handle(State& state, const Input<"EnableLif">& input);
int Handle(State& state, const Input<"DisableLif">& input);
int Handle(State& state, const Input<"RAMTUSetv6">& input);
int Handle(State& state, const Input<"SetLifMcastRouting", 125>& input);
int Handle(State& state, const Input<"SetLifMcastRouting", 126>& input);
int Handle(State& state, const Input<"SetMcastRouting">& input);
int Handle(State& state, const Input<"ConfigureLifDhcpRelay">& input);

// Their counters.
Answer Handle(State& state, const Input<"GetLifStats">& input);
Answer Handle(const State& state, const Input<"GetLifStatsCached">& input);
int Handle(State& state, const Input<"ResetLifStats">& input);

}  // namespace vdrsim
