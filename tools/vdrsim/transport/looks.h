#pragma once

#include "device_nodes.h"
#include "held_up_call.h"

namespace vdrsim {

// Answers stat, access and their kin: as for a character device where a device node is named, and
// else lets the call go on.
void AnswerLook(HeldUpCall& call, const DeviceNodes& nodes);

}  // namespace vdrsim
