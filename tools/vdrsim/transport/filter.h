#pragma once

#include <linux/filter.h>

#include <cstdint>
#include <vector>

namespace vdrsim {

// How much of a run is held up beside the commands. To be held up takes a call several times as
// long, so only what the control library does is by default.
enum class Scope : uint8_t {
  ReadWriteOpens,
  EveryOpenAndLook,  // also what opens a file otherwise, and looks at it by its name
};

// Makes the filter that holds up calls for a supervisor and lets every other call pass: ioctl
// requests that may be commands, or that Linux would answer for a node itself, and opens.
//
// Throws StartFailure where the kernel or a container does not let a process be supervised.
std::vector<sock_filter> SupervisedCallsFilter(Scope scope);

// Puts the calling thread, and all that it will start, under the filter. Returns the listener on
// which the calls arrive, or -1 with errno. Safe after a fork.
int InstallFilter(std::vector<sock_filter>& filter);

// Says in one line why the filter could not be installed. Throws StartFailure always.
[[noreturn]] void FailFilter(int error);

}  // namespace vdrsim
