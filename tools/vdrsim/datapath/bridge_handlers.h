#pragma once

#include "call.h"
#include "datapath/state.h"
#include "requests/input.h"

namespace vdrsim {

// Bridges.
int Handle(State& state, const Input<"BridgeAdd">& input);
int Handle(State& state, const Input<"BridgeDel">& input);
int Handle(State& state, const Input<"BridgeEnable">& input);
int Handle(State& state, const Input<"BridgeDisable">& input);
int Handle(State& state, const Input<"SetBridgeRepMode">& input);
int Handle(State& state, const Input<"BridgeSetHAAdminState">& input);
Answer Handle(const State& state, const Input<"GetBridgeInstances">& input);
Answer Handle(const State& state, const Input<"GetBridgeInstance">& input);

// Their networks and ports.
Answer Handle(const State& state, const Input<"GetBridgeNetworks">& input);
Answer Handle(const State& state, const Input<"GetBridgePorts">& input);

// Their forwarding database.
Answer Handle(const State& state, const Input<"GetBridgeFdbEntries">& input);
int Handle(State& state, const Input<"BridgeSetFdbEntry">& input);
int Handle(State& state, const Input<"BridgeClearFdbTable">& input);

// Endpoints.
int Handle(State& state, const Input<"AddBridgeEndpoint">& input);
int Handle(State& state, const Input<"DelBridgeEndpoint">& input);
int Handle(State& state, const Input<"FlushBridgeEndpoint", 47>& input);
int Handle(State& state, const Input<"FlushBridgeEndpoint", 48>& input);
Answer Handle(const State& state, const Input<"GetBeStats">& input);
Answer Handle(const State& state, const Input<"GetBeStatus">& input);
Answer Handle(const State& state, const Input<"GetBeAll">& input);
Answer Handle(const State& state, const Input<"GetBridgeEndpoints">& input);

// Clusters.
Answer Handle(const State& state, const Input<"GetBridgeClusters">& input);
int Handle(State& state, const Input<"BridgeClusterSet", 90>& input);
int Handle(State& state, const Input<"BridgeClusterSet", 91>& input);
Answer Handle(const State& state, const Input<"GetBridgeClusterNodes">& input);
int Handle(State& state, const Input<"BridgeClusterNodeSet", 93>& input);
int Handle(State& state, const Input<"BridgeClusterNodeSet", 94>& input);
int Handle(State& state, const Input<"FlushBridgeCluster", 103>& input);
int Handle(State& state, const Input<"FlushBridgeCluster", 104>& input);
int Handle(State& state, const Input<"BridgeClusterBfdHAProfileSet">& input);
int Handle(State& state, const Input<"SetBridgeClusterDebug">& input);

// BFD.
Answer Handle(const State& state, const Input<"GetBridgeBFDSessions">& input);
int Handle(State& state, const Input<"PlumbBFDPortConnection">& input);
int Handle(State& state, const Input<"UnPlumbBFDPortConnection">& input);
Answer Handle(const State& state, const Input<"GetBFDPortConnections">& input);

// The transport node of the host.
int Handle(State& state, const Input<"BridgeLocalTransportNodeSet", 100>& input);
int Handle(State& state, const Input<"BridgeLocalTransportNodeSet", 101>& input);
Answer Handle(const State& state, const Input<"BridgeGetLocalTransportNode">& input);

}  // namespace vdrsim
