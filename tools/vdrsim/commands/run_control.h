#pragma once

#include "commands/fault_options.h"
#include "control/control.h"
#include "datapath/datapath.h"
#include "journal/journal.h"

namespace vdrsim {

// Each lets `vdrsim ctl` reach one part of the run.
void ControlFaults(Control& control, RunFaults& faults);
void ControlJournal(Control& control, Journal& journal);
void ControlState(Control& control, Datapath& datapath);

}  // namespace vdrsim
