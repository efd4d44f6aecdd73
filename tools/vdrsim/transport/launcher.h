#pragma once

#include <sys/types.h>

#include <string>
#include <utility>
#include <vector>

#include "device_nodes.h"
#include "filter.h"
#include "run_signals.h"
#include "unique_fd.h"

namespace vdrsim {

// A process under supervision that waits for leave to become the command. Without it, the process
// ends with this object.
struct Launched {
  Launched(pid_t process, UniqueFd channel) : command(process), leave(std::move(channel)) {}
  Launched(Launched&&) = default;
  ~Launched();

  // Lets the command begin. Its calls wait from now on to be answered.
  void Begin();

  pid_t command;
  UniqueFd leave;
  UniqueFd listener{};
};

// Prepares to run `arguments` under supervision. Whatever the run will start and leave behind becomes
// a child of this process.
//
// A command that can't be executed says so itself and exits with status 127 when it was not found,
// else 126. Throws StartFailure when the kernel or a container withholds a part of what it takes;
// no process is left then.
Launched Launch(const std::vector<std::string>& arguments, Scope scope, const RunSignals& signals,
                const DeviceNodes& nodes);

}  // namespace vdrsim
