#pragma once

#include "call.h"
#include "datapath/state.h"
#include "requests/input.h"

namespace vdrsim {

// IPv4 routes, and what follows from them and from LIFs.
Answer Handle(State& state, const Input<"SetRoute">& input);
Answer Handle(State& state, const Input<"DelRoute">& input);
Answer Handle(const State& state, const Input<"GetRoutes">& input);
Answer Handle(const State& state, const Input<"GetResolveRoute">& input);
Answer Handle(const State& state, const Input<"GetLifSelectionRoutes">& input);
Answer Handle(const State& state, const Input<"GetDemuxRoutes">& input);

// IPv6 routes.
int Handle(State& state, const Input<"SetRoutev6">& input);
int Handle(State& state, const Input<"DelRoutev6">& input);
Answer Handle(const State& state, const Input<"GetRoutesv6", 115>& input);
Answer Handle(const State& state, const Input<"GetRoutesv6", 114>& input);

// Neighbours.
int Handle(State& state, const Input<"SetArp">& input);
int Handle(State& state, const Input<"SetProxyArp">& input);
int Handle(State& state, const Input<"SetArpv6">& input);
int Handle(State& state, const Input<"SetProxyArpv6">& input);
int Handle(State& state, const Input<"DelArp">& input);
int Handle(State& state, const Input<"DelProxyArp">& input);
int Handle(State& state, const Input<"DelArpv6">& input);
int Handle(State& state, const Input<"DelProxyArpv6">& input);
Answer Handle(const State& state, const Input<"GetArps">& input);
Answer Handle(const State& state, const Input<"GetProxyArps">& input);
Answer Handle(const State& state, const Input<"GetArpsv6">& input);
int Handle(State& state, const Input<"ClearArp">& input);
int Handle(State& state, const Input<"ClearArpv6">& input);

// Flushes.
int Handle(State& state, const Input<"GenericFlush">& input);
int Handle(State& state, const Input<"PMTUTableCearv6">& input);

}  // namespace vdrsim
