#pragma once

#include "device_nodes.h"
#include "held_up_call.h"

namespace vdrsim {

// Answers open, openat, openat2 and creat: with a descriptor of a device node, or an error, where
// one is named, and else lets the call go on.
void AnswerOpen(HeldUpCall& call, const DeviceNodes& nodes);

}  // namespace vdrsim
