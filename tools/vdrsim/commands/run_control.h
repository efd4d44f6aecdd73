#pragma once

#include "commands/fault_options.h"
#include "control/control.h"

namespace vdrsim {

// Each lets `vdrsim ctl` reach one part of the run.
void ControlFaults(Control& control, RunFaults& faults);

}  // namespace vdrsim
