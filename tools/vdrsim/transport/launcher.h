#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "device_nodes.h"
#include "filter.h"
#include "run_signals.h"
#include "unique_fd.h"

namespace vdrsim {

// A command that was started with its system calls supervised.
struct Launched {
  pid_t command = -1;
  UniqueFd listener{};
};

// Starts `arguments` under supervision; its calls wait from now on to be answered. Whatever the run
// will start and leave behind becomes a child of this process.
//
// A command that can't be executed says so itself and exits with status 127 when it was not found,
// else 126. Throws StartFailure when the kernel or a container withholds a part of what it takes;
// no process is left then.
Launched Launch(const std::vector<std::string>& arguments, Scope scope, const RunSignals& signals,
                const DeviceNodes& nodes);

}  // namespace vdrsim
