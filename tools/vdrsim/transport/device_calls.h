#pragma once

#include "call.h"
#include "device_nodes.h"
#include "held_up_call.h"

namespace vdrsim {

// Answers ioctl: as a command where the descriptor is that of a simulated node, with a refusal where
// it might be one or is the host's own, and else lets the call go on.
void AnswerIoctl(HeldUpCall& call, const DeviceNodes& nodes, Executor& executor);

}  // namespace vdrsim
